// A system function that some supported Windows versions lack: looked up by name at first use and remembered, its
// absence too. Objects live at namespace scope; any thread.
//
//   constinit LateFunction<BOOL(WINAPI*)(DWORD)> g_set_directories(TEXT("Kernel32.dll"), "SetDefaultDllDirectories");
//   if (auto call = g_set_directories.Get()) call(…);
#pragma once

#include <windows.h>

#include "base/lock.h"

namespace vanta {

// The part that is the same for all functions.
class LateAddress {
 protected:
  constexpr LateAddress(const WCHAR* module, const char* name) : module_(module), name_(name) {}
  void* Find();  // null when the module does not have it

 private:
  const WCHAR* module_;
  const char* name_;
  void* address_ = nullptr;
  Once once_;
};

template <class Call>
class LateFunction : LateAddress {
 public:
  // `module` is one that every process has loaded (Kernel32.dll, NtDll.dll); it is not loaded here.
  constexpr LateFunction(const WCHAR* module, const char* name) : LateAddress(module, name) {}

  Call Get() { return reinterpret_cast<Call>(Find()); }
};

// The same for an export of a loaded library that is asked once. Null when it is missing.
template <class Call>
Call ExportOf(HMODULE module, const char* name) {
  return reinterpret_cast<Call>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

}  // namespace vanta
