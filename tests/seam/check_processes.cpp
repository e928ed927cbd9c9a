// Processes, threads and modules: sizes, values and answers on which Windows and this side agree.
#include <windows.h>

#include <process.h>
#include <psapi.h>
#include <shellapi.h>
#include <tlhelp32.h>

#include <string>

#include "seam_check.h"

namespace {

using Text = std::basic_string<WCHAR>;

static_assert(sizeof(PROCESSENTRY32W) == (sizeof(void*) == 8 ? 568 : 556));
static_assert(PROCESS_TERMINATE == 1 && PROCESS_VM_READ == 0x10 && PROCESS_QUERY_INFORMATION == 0x400);
static_assert(PROCESS_QUERY_LIMITED_INFORMATION == 0x1000 && PROCESS_ALL_ACCESS == 0x1FFFFF);
static_assert(INFINITE == 0xFFFFFFFFu && WAIT_TIMEOUT == 258 && STILL_ACTIVE == 259);
static_assert(LOAD_LIBRARY_SEARCH_SYSTEM32 == 0x800 && LOAD_LIBRARY_AS_DATAFILE == 2 && CREATE_SUSPENDED == 4);
static_assert(SE_ERR_NOASSOC == 31 && LPTR == 0x40 && GHND == 0x42);

struct Split {
  const WCHAR* line;
  const WCHAR* words;  // each followed by "|"
};

bool CommandLinesSplitTheSameWay() {
  constexpr Split kSplits[] = {
      {TEXT("a\"b c\" d"), TEXT("a\"b|c d|")},
      {TEXT("\"a\"b c"), TEXT("a|b|c|")},
      {TEXT("p \"\"\" x"), TEXT("p|\"|x|")},
      {TEXT("p \"a\"\"b c"), TEXT("p|a\"b|c|")},
      {TEXT("p \"\"\"\" x"), TEXT("p|\" x|")},
      {TEXT("p a\"\"b c"), TEXT("p|ab|c|")},
      {TEXT("p \"\\\"\"\" x"), TEXT("p|\"\"|x|")},
      {TEXT("p a\\\\\\\\\"b c\""), TEXT("p|a\\\\b c|")},
      {TEXT(" x"), TEXT("|x|")},
      {TEXT("p a\\\"b \\\\c "), TEXT("p|a\"b|\\\\c|")},
  };
  for (const Split& split : kSplits) {
    int count = 0;
    LPWSTR* const words = CommandLineToArgvW(split.line, &count);
    Text joined;
    for (int i = 0; words && i < count; ++i) joined += Text(words[i]) + TEXT("|");
    LocalFree(words);
    if (joined != split.words) return false;
  }
  return true;
}

unsigned WINAPI EndEarly(void*) {
  _endthreadex(7);
  return 0;
}

bool ThreadsEndWithTheirCode() {
  const auto thread =
      reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, EndEarly, nullptr, CREATE_SUSPENDED, nullptr));
  DWORD before = 0, after = 0;
  GetExitCodeThread(thread, &before);
  ResumeThread(thread);
  const DWORD waited = WaitForSingleObject(thread, INFINITE);
  GetExitCodeThread(thread, &after);
  CloseHandle(thread);
  return before == STILL_ACTIVE && waited == WAIT_OBJECT_0 && after == 7;
}

bool WaitForAllTakesNothingUntilAllAreThere() {
  const HANDLE events[] = {CreateEventW(nullptr, FALSE, FALSE, nullptr), CreateEventW(nullptr, FALSE, TRUE, nullptr)};
  const bool none = WaitForMultipleObjects(2, events, TRUE, 0) == WAIT_TIMEOUT;
  const bool second = WaitForMultipleObjects(2, events, FALSE, 0) == WAIT_OBJECT_0 + 1;
  for (HANDLE event : events) CloseHandle(event);
  return none && second && WaitForMultipleObjects(0, events, FALSE, 0) == WAIT_FAILED;
}

bool ThisProcessIsListedByItsFileName() {
  WCHAR path[MAX_PATH];
  const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
  const Text full(path, length);
  const Text name = full.substr(full.rfind(TEXT('\\')) + 1);
  const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  PROCESSENTRY32W entry = {};
  entry.dwSize = sizeof entry;
  BOOL more = Process32FirstW(snapshot, &entry);
  while (more && entry.th32ProcessID != GetCurrentProcessId()) more = Process32NextW(snapshot, &entry);
  CloseHandle(snapshot);
  return more && name == entry.szExeFile;
}

bool HandleDoesOnlyWhatItWasOpenedFor() {
  const HANDLE process = OpenProcess(PROCESS_TERMINATE, FALSE, GetCurrentProcessId());
  WCHAR path[MAX_PATH];
  const DWORD length = GetModuleFileNameExW(process, nullptr, path, MAX_PATH);
  const DWORD error = GetLastError();
  CloseHandle(process);
  return process && length == 0 && error == ERROR_ACCESS_DENIED;
}

bool MissingLibrariesAndExportsHaveTheirErrors() {
  const HMODULE none = LoadLibraryW(TEXT("no such library here.dll"));
  const DWORD module_error = GetLastError();
  const FARPROC nothing = GetProcAddress(GetModuleHandleW(TEXT("KERNEL32")), "NoSuchFunctionHere");
  return !none && module_error == ERROR_MOD_NOT_FOUND && !nothing && GetLastError() == ERROR_PROC_NOT_FOUND;
}

bool ModulePathThatIsCutSaysSo() {
  WCHAR path[4] = {};
  return GetModuleFileNameW(nullptr, path, 3) == 3 && GetLastError() == ERROR_INSUFFICIENT_BUFFER;
}

bool UnlockingTheLastTimeSaysNoError() {
  const HGLOBAL block = GlobalAlloc(GHND, 16);
  const bool locked = GlobalLock(block) != nullptr;
  const BOOL still_locked = GlobalUnlock(block);
  const DWORD first = GetLastError();
  GlobalUnlock(block);
  const DWORD second = GetLastError();
  return locked && !still_locked && first == NO_ERROR && second == ERROR_NOT_LOCKED && !GlobalFree(block);
}

constexpr SeamCheck kChecks[] = {
    {"CommandLineToArgvW splits quotes and backslashes", CommandLinesSplitTheSameWay},
    {"threads end with their code", ThreadsEndWithTheirCode},
    {"WaitForMultipleObjects for all takes all or nothing", WaitForAllTakesNothingUntilAllAreThere},
    {"snapshots list this process by its file name", ThisProcessIsListedByItsFileName},
    {"process handles do what they were opened for", HandleDoesOnlyWhatItWasOpenedFor},
    {"missing libraries and exports have their errors", MissingLibrariesAndExportsHaveTheirErrors},
    {"GetModuleFileNameW says that it cut", ModulePathThatIsCutSaysSo},
    {"GlobalUnlock tells the last unlocking", UnlockingTheLastTimeSaysNoError},
};

}  // namespace

std::span<const SeamCheck> ProcessChecks() { return kChecks; }
