#include <windows.h>

#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <nlohmann/json.hpp>
#include <thread>

#include "winhost/kernel/process_object.h"
#include "winhost/kernel/program.h"
#include "winhost/kernel/thread_object.h"
#include "winhost/machine/faults.h"
#include "winhost/machine/journal.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

constexpr DWORD kXpRights =
    STANDARD_RIGHTS_REQUIRED | SYNCHRONIZE | 0xFFF | GENERIC_ALL | GENERIC_READ | GENERIC_WRITE | GENERIC_EXECUTE;
constexpr auto kDyingAtMost = std::chrono::seconds(10);

ProcessTable& Table() { return Machine::Current().Get<ProcessTable>(); }

// Querying in full contains the limited kind.
DWORD Granted(DWORD access) {
  if (access & GENERIC_ALL) access |= PROCESS_ALL_ACCESS;
  if (access & PROCESS_QUERY_INFORMATION) access |= PROCESS_QUERY_LIMITED_INFORMATION;
  return access;
}

DWORD WhyNotOpened(const std::optional<ProcessEntry>& process, DWORD access) {
  if (!process || process->id == 0) return ERROR_INVALID_PARAMETER;
  if (process->id == 4) return ERROR_ACCESS_DENIED;
  if (const auto planned = PlannedFault("OpenProcess", process->image)) return *planned;
  if (!Machine::Current().facts().AtLeast(6, 0) && (access & ~kXpRights)) return ERROR_ACCESS_DENIED;
  return ERROR_SUCCESS;
}

bool Kill(const ProcessEntry& process) {
  if (process.made_up) return true;
  if (kill(static_cast<pid_t>(process.id), SIGKILL) != 0) return false;
  const auto deadline = std::chrono::steady_clock::now() + kDyingAtMost;
  while (Table().Alive(process) && std::chrono::steady_clock::now() < deadline) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

void JournalEnd(const ProcessEntry& process, DWORD code) {
  WriteJournal("exits", {{"image", Narrow(process.image)},
                         {"process", process.id},
                         {"code", static_cast<std::int32_t>(code)},
                         {"ended_by", Narrow(ProgramPath())}});
}

BOOL Fail(DWORD error) {
  SetLastError(error);
  return FALSE;
}

}  // namespace

bool Process::Signalled() { return !Table().Alive(entry_); }

std::shared_ptr<Process> ThisProcess() {
  const auto self = Table().Find(GetCurrentProcessId());
  return std::make_shared<Process>(self.value_or(ProcessEntry{}), ~DWORD{0});
}

std::shared_ptr<Process> ProcessOf(HANDLE handle, DWORD access) {
  auto process = handle == GetCurrentProcess() ? ThisProcess() : ObjectAs<Process>(handle);
  if (process && process->Allows(access)) return process;
  SetLastError(process ? ERROR_ACCESS_DENIED : ERROR_INVALID_HANDLE);
  return nullptr;
}

}  // namespace winhost

using namespace winhost;

HANDLE GetCurrentProcess() { return reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(-1)); }
DWORD GetCurrentProcessId() { return static_cast<DWORD>(getpid()); }

HANDLE OpenProcess(DWORD access, BOOL, DWORD process_id) {
  const auto process = Table().Find(process_id);
  if (const DWORD error = WhyNotOpened(process, access)) {
    SetLastError(error);
    return nullptr;
  }
  return MakeHandle(std::make_shared<Process>(*process, Granted(access)));
}

DWORD GetProcessId(HANDLE handle) {
  const auto process = ProcessOf(handle, PROCESS_QUERY_LIMITED_INFORMATION);
  return process ? process->entry().id : 0;
}

BOOL GetExitCodeProcess(HANDLE handle, LPDWORD code) {
  const auto process = ProcessOf(handle, PROCESS_QUERY_LIMITED_INFORMATION);
  if (process) *code = Table().ExitCode(process->entry());
  return process != nullptr;
}

BOOL TerminateProcess(HANDLE handle, UINT code) {
  const auto process = ProcessOf(handle, PROCESS_TERMINATE);
  if (!process) return FALSE;
  const ProcessEntry& entry = process->entry();
  if (const auto error = PlannedFault("TerminateProcess", entry.image)) return Fail(*error);
  if (!Table().Alive(entry)) return Fail(ERROR_ACCESS_DENIED);
  // The code first: whoever sees the process dead may ask for it at once.
  Table().RecordExit(entry, code);
  JournalEnd(entry, code);
  if (entry.id == GetCurrentProcessId()) _exit(static_cast<int>(code));
  return Kill(entry) ? TRUE : Fail(ERROR_ACCESS_DENIED);
}

void ExitProcess(UINT code) {
  RecordProgramExit(static_cast<int>(code));
  // Other threads end with the process and must not see its statics destroyed.
  if (OnMadeThread() || LiveThreads() > 0) {
    std::fflush(nullptr);
    _exit(static_cast<int>(code));
  }
  std::exit(static_cast<int>(code));
}

BOOL IsWow64Process(HANDLE handle, PBOOL wow64) {
  const auto process = ProcessOf(handle, PROCESS_QUERY_LIMITED_INFORMATION);
  const Facts& facts = Machine::Current().facts();
  if (process) *wow64 = facts.windows_bits == 64 && facts.process_bits == 32;
  return process != nullptr;
}
