// The built-in modules of a machine (kernel32.dll, ntdll.dll, shell32.dll …) and what they export. Product code that
// looks a newer function up at run time finds it here exactly on the Windows versions that have it.
//
// A subsystem that owns such a function adds a row in its own file and names its table in exports.cpp.
#pragma once

#include <minwindef.h>

#include <span>

#include "winhost/machine/facts.h"

namespace winhost {

struct BuiltInExport {
  const char* module;  // lower case, with extension: "kernel32.dll"
  const char* name;    // as exported: "GetNativeSystemInfo"
  FARPROC function;
  bool (*present)(const Facts&);  // null: on every Windows
};

// A function as a row holds it.
template <class Function>
FARPROC AsExport(Function* function) {
  return reinterpret_cast<FARPROC>(reinterpret_cast<void (*)()>(function));
}

// Every subsystem's rows.
std::span<const std::span<const BuiltInExport>> BuiltInExports();

}  // namespace winhost
