#include "winhost/kernel/launch.h"

#include <windows.h>

#include <errno.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <nlohmann/json.hpp>

#include "winhost/kernel/command_line.h"
#include "winhost/kernel/host_code.h"
#include "winhost/kernel/paths.h"
#include "winhost/kernel/process_table.h"
#include "winhost/kernel/spawn.h"
#include "winhost/kernel/system_programs.h"
#include "winhost/machine/faults.h"
#include "winhost/machine/journal.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

// Real milliseconds; a build with sanitizers takes its time to start.
constexpr int kUpWithinMs = 10'000;
constexpr int kEndedWithinMs = 60'000;
constexpr int kGoneWithinMs = 1'000;  // after its descriptors are closed

void Journal(const LaunchRequest& request, DWORD result, std::optional<pid_t> child) {
  nlohmann::json line = {{"file", Narrow(request.file)},
                         {"parameters", Narrow(request.parameters)},
                         {"directory", Narrow(request.directory)},
                         {"verb", Narrow(request.verb)},
                         {"show", request.show},
                         {"elevated", request.elevated},
                         {"by", request.by},
                         {"result", result}};
  if (child) line["child"] = *child;
  WriteJournal("launches", std::move(line));
}

// The environment of this process but for the variables that speak of it alone.
std::vector<std::string> InheritedEnvironment() {
  static constexpr std::string_view kOwn[] = {
      "VANTA_MACHINE=",  "VANTA_IMAGE=",         "VANTA_SHOW=",    "VANTA_COMMAND_LINE=",
      "VANTA_READY_FD=", "VANTA_HOST_PROGRAMS=", "VANTA_ELEVATED="};
  std::vector<std::string> variables;
  for (char** variable = environ; *variable; ++variable) {
    const std::string_view text = *variable;
    if (std::ranges::none_of(kOwn, [&](std::string_view own) { return text.starts_with(own); })) {
      variables.emplace_back(text);
    }
  }
  return variables;
}

std::vector<std::string> Environment(const LaunchRequest& request, const std::u16string& image) {
  std::vector<std::string> variables = InheritedEnvironment();
  variables.push_back("VANTA_MACHINE=" + Machine::Current().folder().string());
  variables.push_back("VANTA_IMAGE=" + Narrow(image));
  variables.push_back("VANTA_COMMAND_LINE=\"" + Narrow(image) + "\" " + Narrow(request.parameters));
  variables.push_back(std::string("VANTA_ELEVATED=") + (request.elevated ? "1" : "0"));
  variables.push_back("VANTA_SHOW=" + std::to_string(request.show));
  if (const auto programs = HostProgramsFolder()) variables.push_back("VANTA_HOST_PROGRAMS=" + programs->string());
  return variables;
}

std::vector<std::string> Words(const LaunchRequest& request, const std::u16string& image) {
  std::vector<std::string> words{Narrow(image)};
  for (const std::u16string& word : SplitArguments(request.parameters)) words.push_back(Narrow(word));
  return words;
}

std::optional<std::filesystem::path> Directory(const LaunchRequest& request) {
  const auto directory = LinuxPath(request.directory.empty() ? CurrentDirectory() : request.directory);
  std::error_code ignored;
  return directory && std::filesystem::is_directory(*directory, ignored) ? directory : std::nullopt;
}

// Only a program that knows the variable says when it is up; another keeps its descriptor until it ends.
bool SaysWhenUp(int program) {
  struct stat file = {};
  if (fstat(program, &file) != 0 || file.st_size <= 0) return false;
  const auto size = static_cast<std::size_t>(file.st_size);
  void* const bytes = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, program, 0);
  if (bytes == MAP_FAILED) return false;
  const bool found = memmem(bytes, size, kReadyVariable, std::strlen(kReadyVariable)) != nullptr;
  munmap(bytes, size);
  return found;
}

int WaitAfterStart(int program) {
  if (Machine::Current().facts().launches_wait) return kEndedWithinMs;
  return SaysWhenUp(program) ? kUpWithinMs : 0;
}

DWORD WhyNotStarted(int error) {
  switch (error) {
    case ENOEXEC:
      return ERROR_BAD_EXE_FORMAT;
    case ENOENT:  // the file is open, so what is missing is the loader it names
      return ERROR_BAD_EXE_FORMAT;
    case EACCES:
    case EPERM:
      return ERROR_ACCESS_DENIED;
    default:
      return ERROR_NOT_ENOUGH_MEMORY;
  }
}

// 0 and the child's id, or the error.
DWORD Start(const LaunchRequest& request, pid_t* child) {
  if (const auto planned = PlannedFault("LaunchProgram", request.file)) return *planned;
  ProvideSystemProgram(request.file);
  const auto path = LinuxPath(request.file);
  if (!path) return ERROR_PATH_NOT_FOUND;
  const std::u16string image = WindowsPath(*path);
  const auto directory = Directory(request);
  if (!directory) return ERROR_DIRECTORY;
  DWORD error = ERROR_SUCCESS;
  const auto code = OpenHostCode(*path, &error);
  if (!code) return error;
  const int program = code->descriptor();
  *child =
      SpawnDetached({program, Words(request, image), Environment(request, image), *directory}, WaitAfterStart(program));
  if (*child < 0) return WhyNotStarted(-*child);
  if (Machine::Current().facts().launches_wait) AwaitEnd(*child, kGoneWithinMs);
  Machine::Current().Get<ProcessTable>().Enter(static_cast<DWORD>(*child), image, false);
  return ERROR_SUCCESS;
}

}  // namespace

bool LaunchProgram(const LaunchRequest& request, DWORD* error) {
  pid_t child = 0;
  const DWORD result = Start(request, &child);
  Journal(request, result, result ? std::nullopt : std::optional(child));
  if (error) *error = result;
  return result == ERROR_SUCCESS;
}

void JournalLaunch(const LaunchRequest& request, DWORD result) { Journal(request, result, std::nullopt); }

}  // namespace winhost
