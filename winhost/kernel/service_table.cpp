#include "winhost/kernel/service_table.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <nlohmann/json.hpp>

#include "winhost/kernel/security_descriptor.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

using Json = nlohmann::json;

struct Word {
  const char* name;
  DWORD value;
};
constexpr Word kStates[] = {{"stopped", SERVICE_STOPPED},
                            {"start_pending", SERVICE_START_PENDING},
                            {"stop_pending", SERVICE_STOP_PENDING},
                            {"running", SERVICE_RUNNING},
                            {"continue_pending", SERVICE_CONTINUE_PENDING},
                            {"pause_pending", SERVICE_PAUSE_PENDING},
                            {"paused", SERVICE_PAUSED}};
constexpr Word kStartTypes[] = {{"boot", SERVICE_BOOT_START},
                                {"system", SERVICE_SYSTEM_START},
                                {"auto", SERVICE_AUTO_START},
                                {"manual", SERVICE_DEMAND_START},
                                {"disabled", SERVICE_DISABLED}};

template <std::size_t N>
DWORD Value(const Word (&words)[N], const std::string& name) {
  for (const Word& word : words) {
    if (name == word.name) return word.value;
  }
  std::fprintf(stderr, "machine: services: unknown word \"%s\"\n", name.c_str());
  std::exit(3);
}

template <std::size_t N>
const char* Name(const Word (&words)[N], DWORD value) {
  for (const Word& word : words) {
    if (value == word.value) return word.name;
  }
  return "unknown";
}

// The file of changes, locked for the object's life: shared to read, alone to write.
class Changes {
 public:
  Changes(Machine& machine, bool write)
      : file_(open((machine.folder() / "services.json").c_str(), (write ? O_RDWR | O_CREAT : O_RDONLY) | O_CLOEXEC,
                   0644)) {
    if (file_ < 0) return;
    flock(file_, write ? LOCK_EX : LOCK_SH);
    std::string text;
    char buffer[4096];
    for (ssize_t got; (got = read(file_, buffer, sizeof buffer)) > 0;)
      text.append(buffer, static_cast<std::size_t>(got));
    Json parsed = Json::parse(text, nullptr, false);
    if (parsed.is_object()) all = std::move(parsed);
  }
  ~Changes() {
    if (file_ >= 0) close(file_);
  }
  Changes(const Changes&) = delete;
  Changes& operator=(const Changes&) = delete;

  bool Save() {
    const std::string text = all.dump(2) + "\n";
    return file_ >= 0 && ftruncate(file_, 0) == 0 &&
           pwrite(file_, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size());
  }

  Json all = Json::object();

 private:
  int file_;
};

std::map<std::string, ServiceFacts> Declared(const Machine& machine) {
  std::map<std::string, ServiceFacts> services = machine.facts().services;
  for (const char* name : {"EventLog", "RpcSs", "Schedule"}) {
    const auto named = [name](const auto& entry) { return EqualNoCase(Wide(entry.first), Wide(name)); };
    if (std::find_if(services.begin(), services.end(), named) == services.end()) services[name] = ServiceFacts{};
  }
  std::erase_if(services, [](const auto& entry) { return entry.second.state == "absent"; });
  return services;
}

std::vector<std::byte> FromNumbers(const Json& list) {
  std::vector<std::byte> bytes;
  for (const Json& number : list) bytes.push_back(static_cast<std::byte>(number.get<unsigned>()));
  return bytes;
}

Json ToNumbers(const std::vector<std::byte>& bytes) {
  Json list = Json::array();
  for (const std::byte b : bytes) list.push_back(static_cast<unsigned>(b));
  return list;
}

ServiceRecord Record(const std::string& name, const ServiceFacts& fact, const Json& changes) {
  ServiceRecord record;
  record.name = Wide(name);
  record.type = fact.type;
  record.state = Value(kStates, fact.state);
  record.start_type = Value(kStartTypes, fact.start_type);
  record.security = PlainDescriptor(fact.full_access_error == 0);
  record.full_access_error = fact.full_access_error;
  record.start_error = fact.start_error;
  if (const auto changed = changes.find(name); changed != changes.end()) {
    record.state = Value(kStates, changed->at("state"));
    record.start_type = Value(kStartTypes, changed->at("start_type"));
    if (changed->contains("security")) record.security = FromNumbers(changed->at("security"));
    record.security_changed = changed->contains("security");
  }
  return record;
}

}  // namespace

std::vector<ServiceRecord> ListServices(Machine& machine) {
  const Changes changes(machine, false);
  std::vector<ServiceRecord> records;
  for (const auto& [name, fact] : Declared(machine)) records.push_back(Record(name, fact, changes.all));
  return records;
}

std::optional<ServiceRecord> FindService(Machine& machine, std::u16string_view name) {
  for (ServiceRecord& record : ListServices(machine)) {
    if (EqualNoCase(record.name, name)) return std::move(record);
  }
  return std::nullopt;
}

DWORD ChangeService(Machine& machine, std::u16string_view name, const std::function<DWORD(ServiceRecord&)>& change) {
  Changes changes(machine, true);
  for (const auto& [key, fact] : Declared(machine)) {
    if (!EqualNoCase(Wide(key), name)) continue;
    ServiceRecord record = Record(key, fact, changes.all);
    if (const DWORD error = change(record)) return error;
    Json& kept = changes.all[key] = {{"state", ServiceStateName(record.state)},
                                     {"start_type", StartTypeName(record.start_type)}};
    const bool original = record.security == PlainDescriptor(fact.full_access_error == 0);
    if (!original) kept["security"] = ToNumbers(record.security);
    return changes.Save() ? ERROR_SUCCESS : ERROR_WRITE_FAULT;
  }
  return ERROR_SERVICE_DOES_NOT_EXIST;
}

SERVICE_STATUS StatusOf(const ServiceRecord& record) {
  const bool running = record.state == SERVICE_RUNNING;
  return {record.type, record.state, running ? SERVICE_ACCEPT_STOP : 0U, NO_ERROR, 0, 0, 0};
}

const char* ServiceStateName(DWORD state) { return Name(kStates, state); }
const char* StartTypeName(DWORD start_type) { return Name(kStartTypes, start_type); }

}  // namespace winhost
