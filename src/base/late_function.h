// A system function that some supported Windows versions lack: looked up by name at first use and remembered, its
// absence too. Objects live at namespace scope; any thread.
//
//   constinit LateFunction<BOOL(WINAPI*)(DWORD)> g_set_directories(TEXT("Kernel32.dll"), "SetDefaultDllDirectories");
//   if (auto call = g_set_directories.Get()) call(…);
#pragma once

#include <windows.h>

#include "base/lock.h"

namespace vanta {

template <class Call>
class LateFunction {
 public:
  // `module` is one that every process has loaded (Kernel32.dll, NtDll.dll); it is not loaded here.
  constexpr LateFunction(const WCHAR* module, const char* name) : module_(module), name_(name) {}

  Call Get() {
    once_.Run([this] {
      const HMODULE module = GetModuleHandleW(module_);
      if (module) call_ = reinterpret_cast<Call>(reinterpret_cast<void*>(GetProcAddress(module, name_)));
    });
    return call_;
  }

 private:
  const WCHAR* module_;
  const char* name_;
  Call call_ = nullptr;
  Once once_;
};

// The same for an export of a loaded library that is asked once. Null when it is missing.
template <class Call>
Call ExportOf(HMODULE module, const char* name) {
  return reinterpret_cast<Call>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

}  // namespace vanta
