#include "winhost/kernel/module_table.h"

#include <dlfcn.h>

#include <algorithm>

#include "winhost/kernel/files.h"
#include "winhost/kernel/paths.h"
#include "winhost/kernel/program.h"
#include "winhost/kernel/search_path.h"
#include "winhost/machine/machine.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

using DllMainFunction = BOOL (*)(HINSTANCE, DWORD, LPVOID);

BOOL CallDllMain(Module& module, DWORD reason) {
  void* const main = dlsym(module.library, "DllMain");
  return main ? reinterpret_cast<DllMainFunction>(main)(HandleOf(module), reason, nullptr) : TRUE;
}

DWORD LoadCode(Module& module) {
  const auto path = LinuxPath(module.path);
  DWORD error = path ? ERROR_SUCCESS : ERROR_MOD_NOT_FOUND;
  auto code = path ? OpenHostCode(*path, &error) : std::nullopt;
  if (!code) return error;
  const std::string name = "/proc/self/fd/" + std::to_string(code->descriptor());
  module.code.emplace(std::move(*code));
  module.library = dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (module.library) return ERROR_SUCCESS;
  const char* why = dlerror();
  const bool symbol = why && std::string_view(why).find("undefined symbol") != std::string_view::npos;
  return symbol ? ERROR_PROC_NOT_FOUND : ERROR_BAD_EXE_FORMAT;
}

void Unload(Module& module) {
  if (module.library) dlclose(module.library);
  if (module.file != INVALID_HANDLE_VALUE) CloseHandle(module.file);
}

}  // namespace

std::u16string_view Module::Name() const { return std::u16string_view(path).substr(path.rfind(u'\\') + 1); }

HMODULE HandleOf(Module& module) { return reinterpret_cast<HMODULE>(&module); }

ModuleTable& ModuleTable::Instance() {
  static auto* table = new ModuleTable;  // loaded libraries may ask while the process ends
  return *table;
}

ModuleTable::ModuleTable() {
  modules_.emplace_back().path = ProgramPath();
  for (const SystemModule* module : StartModules(Machine::Current().facts())) AddSystem(*module);
}

Module* ModuleTable::Find(HMODULE handle) {
  const auto found = std::ranges::find_if(modules_, [&](Module& module) { return HandleOf(module) == handle; });
  return found == modules_.end() ? nullptr : &*found;
}

Module* ModuleTable::FindLoaded(std::u16string_view full_path) {
  const auto found = std::ranges::find_if(
      modules_, [&](const Module& module) { return !module.data_only && EqualNoCase(module.path, full_path); });
  return found == modules_.end() ? nullptr : &*found;
}

Module* ModuleTable::FindLoadedByName(std::u16string_view name) {
  const auto found = std::ranges::find_if(
      modules_, [&](const Module& module) { return !module.data_only && EqualNoCase(module.Name(), name); });
  return found == modules_.end() ? nullptr : &*found;
}

Module* ModuleTable::AddSystem(const SystemModule& system) {
  const auto found = std::ranges::find(modules_, &system, &Module::system);
  if (found != modules_.end()) return &*found;
  Module& module = modules_.emplace_back();
  module.system = &system;
  module.path = std::u16string(kSystemFolder) + u'\\' + system.name;
  return &module;
}

DWORD ModuleTable::AddFile(const std::u16string& full_path, bool data_only, Module** added) {
  const HANDLE file = OpenImage(full_path);
  if (file == INVALID_HANDLE_VALUE) return GetLastError();
  Module& module = modules_.emplace_back();
  module.path = full_path;
  module.data_only = data_only;
  module.file = file;
  DWORD error = data_only ? ERROR_SUCCESS : LoadCode(module);
  if (!error && !data_only && !CallDllMain(module, DLL_PROCESS_ATTACH)) error = ERROR_DLL_INIT_FAILED;
  *added = &module;
  if (error) {
    Unload(module);
    modules_.remove_if([&](const Module& candidate) { return &candidate == &module; });
    *added = nullptr;
  }
  return error;
}

void ModuleTable::Release(Module& module) {
  if (module.file == INVALID_HANDLE_VALUE || --module.references > 0) return;
  if (module.library) CallDllMain(module, DLL_PROCESS_DETACH);
  Unload(module);
  modules_.remove_if([&](const Module& candidate) { return &candidate == &module; });
}

}  // namespace winhost
