#include "winhost/kernel/program.h"

#include <windows.h>

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "winhost/kernel/command_line.h"
#include "winhost/kernel/files.h"
#include "winhost/kernel/paths.h"
#include "winhost/kernel/process_table.h"
#include "winhost/kernel/spawn.h"
#include "winhost/kernel/system_programs.h"
#include "winhost/kernel/thread_object.h"
#include "winhost/machine/journal.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

constexpr std::u16string_view kLinuxDrive = u"Z:";

ProcessTable& Table() { return Machine::Current().Get<ProcessTable>(); }

int NumberFromEnvironment(const char* name, int otherwise) {
  const char* text = std::getenv(name);
  return text && *text ? std::atoi(text) : otherwise;
}

// The launcher goes on once this end of its pipe is closed, which the end of the process does at the latest.
void TellLauncher() {
  const int ready = NumberFromEnvironment(kReadyVariable, -1);
  unsetenv(kReadyVariable);
  if (ready <= 2) return;
  if (Machine::Current().facts().launches_wait) {
    fcntl(ready, F_SETFD, FD_CLOEXEC);
  } else {
    close(ready);
  }
}

// Held until the process ends. What a developer started from drive Z: stays his own to rebuild.
void HoldOwnFile(const std::u16string& path) {
  if (!path.starts_with(kLinuxDrive)) OpenImage(path);
}

void Begin() {
  const std::u16string path = ProgramPath();
  ProvideSystemPrograms();
  HoldOwnFile(path);
  Table().Enter(GetCurrentProcessId(), path, true);
  TellLauncher();
}

}  // namespace

std::u16string ProgramPath() {
  if (const char* image = std::getenv("VANTA_IMAGE"); image && *image) return Wide(image);
  std::error_code ignored;
  return WindowsPath(std::filesystem::read_symlink("/proc/self/exe", ignored));
}

void RecordProgramExit(int code) {
  const auto self = Table().Find(GetCurrentProcessId());
  if (!self) return;
  Table().RecordExit(*self, static_cast<std::uint32_t>(code));
  WriteJournal("exits", {{"image", Narrow(self->image)}, {"process", self->id}, {"code", code}});
}

int RunProgram(WinMain win_main) {
  Begin();
  const std::u16string_view command_line = GetCommandLineW();
  std::u16string parameters(AfterProgramName(command_line));
  const int code = win_main(GetModuleHandleW(nullptr), nullptr, parameters.data(),
                            NumberFromEnvironment("VANTA_SHOW", SW_SHOWNORMAL));
  RecordProgramExit(code);
  if (LiveThreads() > 0) {
    std::fflush(nullptr);
    _exit(code);
  }
  return code;
}

}  // namespace winhost
