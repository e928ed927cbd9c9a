// The libraries that every Windows of some version has, by name: which there are, and what a program can look up in
// them.
#pragma once

#include <minwindef.h>

#include <string_view>
#include <vector>

#include "winhost/machine/facts.h"

namespace winhost {

struct SystemModule {
  const char16_t* name;  // lower case, with extension
  bool at_start;  // in every process from its start (the setup's static imports); the others wait for LoadLibrary
  bool known;     // always taken from the system folder, whatever lies beside the program
  std::uint32_t since_major = 0;
  std::uint32_t since_minor = 0;
};

// Null when this Windows has no such library. `name` is compared without regard to case.
const SystemModule* FindSystemModule(std::u16string_view name, const Facts& facts);
// Every system module that is in a process from its start.
std::vector<const SystemModule*> StartModules(const Facts& facts);
// Null when the module of this Windows has no such export.
FARPROC FindSystemExport(const SystemModule& module, std::string_view name, const Facts& facts);

}  // namespace winhost
