#include "winhost/tasks/job_accounts.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <fstream>
#include <nlohmann/json.hpp>

#include "winhost/machine/text.h"
#include "winhost/tasks/task_files.h"

namespace winhost {
namespace {

using Json = nlohmann::json;

std::filesystem::path AccountsPath(const Machine& machine) { return machine.folder() / "task_accounts.json"; }

// Names are kept in capitals, for tasks are found without regard to case.
std::string Key(const std::u16string& task) { return Narrow(Upcase(task)); }

Json ReadAccounts(const Machine& machine) {
  std::ifstream file(AccountsPath(machine), std::ios::binary);
  Json accounts = Json::parse(file, nullptr, false);
  return accounts.is_object() ? accounts : Json::object();
}

// Holds other processes back while one reads, changes and writes.
class AccountsLock {
 public:
  explicit AccountsLock(const Machine& machine)
      : file_(open((AccountsPath(machine).string() + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644)) {
    if (file_ >= 0) flock(file_, LOCK_EX);
  }
  ~AccountsLock() {
    if (file_ >= 0) close(file_);
  }
  AccountsLock(const AccountsLock&) = delete;
  AccountsLock& operator=(const AccountsLock&) = delete;

 private:
  int file_;
};

}  // namespace

std::u16string JobAccount(const Machine& machine, const std::u16string& task) {
  const Json accounts = ReadAccounts(machine);
  const auto found = accounts.find(Key(task));
  return found != accounts.end() && found->is_string() ? Wide(found->get<std::string>()) : std::u16string();
}

void SetJobAccount(const Machine& machine, const std::u16string& task, const std::u16string& account) {
  if (account.empty() && !std::filesystem::exists(AccountsPath(machine))) return;
  const AccountsLock lock(machine);
  Json accounts = ReadAccounts(machine);
  if (account.empty()) {
    accounts.erase(Key(task));
  } else {
    accounts[Key(task)] = Narrow(account);
  }
  WriteTaskFile(AccountsPath(machine), accounts.dump());
}

}  // namespace winhost
