#include "winhost/kernel/process_table.h"

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <set>
#include <sstream>

#include "winhost/kernel/program.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

namespace fs = std::filesystem;

constexpr auto kKeepDead = std::chrono::hours(1);

struct LinuxProcess {
  std::uint64_t start = 0;
};

// None for a process that is gone or only waits for its parent to ask for its status.
std::optional<LinuxProcess> LookUp(std::uint32_t id) {
  std::ifstream file("/proc/" + std::to_string(id) + "/stat");
  std::string line;
  if (!std::getline(file, line)) return std::nullopt;
  const std::size_t name_end = line.rfind(')');
  if (name_end == std::string::npos) return std::nullopt;
  std::istringstream fields(line.substr(name_end + 1));
  std::string state, skipped;
  fields >> state;
  if (state == "Z" || state == "X") return std::nullopt;
  for (int field = 4; field < 22; ++field) fields >> skipped;
  LinuxProcess process;
  fields >> process.start;
  return process;
}

std::optional<std::uint32_t> ReadNumber(const fs::path& path) {
  std::ifstream file(path);
  std::uint32_t number = 0;
  if (!(file >> number)) return std::nullopt;
  return number;
}

// A reader sees the old file or the new one, never half of one.
void WriteWhole(const fs::path& path, const std::string& text) {
  static std::atomic<unsigned> counter{0};
  const fs::path draft = path.parent_path() / (".draft." + std::to_string(getpid()) + "." + std::to_string(counter++));
  std::ofstream(draft, std::ios::binary) << text;
  std::error_code ignored;
  fs::rename(draft, path, ignored);
}

std::optional<ProcessEntry> ReadRecord(const fs::path& path) {
  ProcessEntry process;
  const std::string name = path.filename().string();
  unsigned long long start = 0;
  int used = 0;
  if (std::sscanf(name.c_str(), "%u.%llu%n", &process.id, &start, &used) != 2) return std::nullopt;
  if (static_cast<std::size_t>(used) != name.size()) return std::nullopt;  // an exit code's file
  process.start = start;
  std::ifstream file(path);
  std::string image;
  if (!(file >> process.parent >> process.own_exit) || !file.ignore() || !std::getline(file, image))
    return std::nullopt;
  process.image = Wide(image);
  return process;
}

}  // namespace

ProcessTable::ProcessTable(Machine& machine) : machine_(machine), folder_(machine.folder() / ".processes") {
  std::error_code ignored;
  fs::create_directories(folder_, ignored);
  DropOldRecords();
  Enter(static_cast<std::uint32_t>(getpid()), ProgramPath(), false);
}

fs::path ProcessTable::RecordOf(const ProcessEntry& process) const {
  return folder_ / (std::to_string(process.id) + "." + std::to_string(process.start));
}

fs::path ProcessTable::ExitOf(const ProcessEntry& process) const { return RecordOf(process).string() + ".exit"; }

void ProcessTable::Enter(std::uint32_t id, const std::u16string& image, bool own_exit) {
  const auto found = LookUp(id);
  if (!found) return;
  ProcessEntry process;
  process.id = id;
  process.start = found->start;
  const auto before = ReadRecord(RecordOf(process));
  const auto self = static_cast<std::uint32_t>(getpid());
  process.parent = before ? before->parent : id == self ? 0 : self;
  own_exit = own_exit || (before && before->own_exit);
  WriteWhole(RecordOf(process), std::to_string(process.parent) + (own_exit ? " 1\n" : " 0\n") + Narrow(image) + "\n");
}

std::vector<ProcessEntry> ProcessTable::Running() const {
  std::vector<ProcessEntry> running;
  std::error_code ignored;
  for (const auto& file : fs::directory_iterator(folder_, ignored)) {
    const auto process = ReadRecord(file.path());
    if (process && Alive(*process)) running.push_back(*process);
  }
  std::ranges::sort(running, {}, &ProcessEntry::id);
  ProcessEntry idle, system;
  system.id = 4;
  running.insert(running.begin(), {idle, system});
  const auto& listed = machine_.facts().running;
  for (std::size_t i = 0; i < listed.size(); ++i) {
    ProcessEntry process;
    process.id = kFirstMadeUpId + 4 * static_cast<std::uint32_t>(i);
    process.image = Wide(listed[i]);
    process.made_up = true;
    if (Alive(process)) running.push_back(process);
  }
  return running;
}

std::optional<ProcessEntry> ProcessTable::Find(std::uint32_t id) const {
  const auto running = Running();
  const auto found = std::ranges::find(running, id, &ProcessEntry::id);
  if (found == running.end()) return std::nullopt;
  return *found;
}

bool ProcessTable::Alive(const ProcessEntry& process) const {
  if (process.made_up) return !fs::exists(ExitOf(process));
  const auto found = LookUp(process.id);
  return found && found->start == process.start;
}

void ProcessTable::RecordExit(const ProcessEntry& process, std::uint32_t code) {
  WriteWhole(ExitOf(process), std::to_string(code) + "\n");
}

std::uint32_t ProcessTable::ExitCode(const ProcessEntry& process) const {
  if (Alive(process)) return kStillActive;
  if (const auto code = ReadNumber(ExitOf(process))) return *code;
  const auto record = ReadRecord(RecordOf(process));
  return record && record->own_exit ? kCrashed : 0;
}

void ProcessTable::DropOldRecords() const {
  std::error_code ignored;
  const auto now = fs::file_time_type::clock::now();
  for (const auto& file : fs::directory_iterator(folder_, ignored)) {
    const auto process = ReadRecord(file.path());
    if (!process || Alive(*process) || now - file.last_write_time(ignored) < kKeepDead) continue;
    fs::remove(ExitOf(*process), ignored);
    fs::remove(file.path(), ignored);
  }
}

}  // namespace winhost
