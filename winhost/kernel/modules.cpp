#include <windows.h>

#include <dlfcn.h>
#include <link.h>

#include <algorithm>

#include "winhost/kernel/module_table.h"
#include "winhost/kernel/paths.h"
#include "winhost/kernel/program.h"
#include "winhost/kernel/search_path.h"
#include "winhost/machine/faults.h"
#include "winhost/machine/machine.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

constexpr DWORD kDataFlags =
    LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_DATAFILE_EXCLUSIVE | LOAD_LIBRARY_AS_IMAGE_RESOURCE;

const Facts& TheFacts() { return Machine::Current().facts(); }

bool HasFolder(std::u16string_view name) { return name.find_first_of(u"\\/:") != std::u16string_view::npos; }

// A name without an extension means a library; a dot at its end says that there is to be none.
std::u16string WithExtension(std::u16string name) {
  const std::size_t leaf = name.find_last_of(u"\\/:") + 1;  // npos + 1 is 0
  if (name.ends_with(u'.')) {
    name.pop_back();
  } else if (name.find(u'.', leaf) == std::u16string::npos) {
    name += u".dll";
  }
  return name;
}

std::optional<std::u16string> ExistingFile(const std::u16string& path) {
  const auto file = LinuxPath(path);
  std::error_code ignored;
  if (!file || !std::filesystem::is_regular_file(*file, ignored)) return std::nullopt;
  return WindowsPath(*file);
}

// Which system library a full path means, as the system folders hold them by name only.
const SystemModule* SystemModuleAt(std::u16string_view path) {
  const std::size_t leaf = path.rfind(u'\\');
  if (leaf == std::u16string_view::npos) return nullptr;
  const std::u16string_view folder = path.substr(0, leaf);
  if (!EqualNoCase(folder, kSystemFolder) && !EqualNoCase(folder, kWowFolder)) return nullptr;
  return FindSystemModule(path.substr(leaf + 1), TheFacts());
}

struct Target {
  const SystemModule* system = nullptr;
  std::optional<std::u16string> file;
};

Target At(const std::u16string& path) {
  if (auto file = ExistingFile(path)) return {nullptr, std::move(file)};
  return {SystemModuleAt(path), std::nullopt};
}

Target Locate(const std::u16string& name, DWORD flags) {
  if (HasFolder(name)) {
    const auto full = LinuxPath(name);
    return At(full ? WindowsPath(*full) : name);  // the system folders need not be on disk
  }
  const SystemModule* system = FindSystemModule(name, TheFacts());
  if (system && system->known) return {system, std::nullopt};
  for (const std::u16string& folder : SearchFolders(flags)) {
    Target target = At(folder + u'\\' + name);
    if (target.system || target.file) return target;
  }
  return {};
}

DWORD Load(const std::u16string& given, DWORD flags, Module** module) {
  const std::u16string name = WithExtension(given);
  const bool data_only = (flags & kDataFlags) != 0;
  ModuleTable& table = ModuleTable::Instance();
  if (!HasFolder(name) && !data_only) *module = table.FindLoadedByName(name);
  if (!*module) {
    const Target target = Locate(name, flags);
    if (target.system) *module = table.AddSystem(*target.system);
    if (!target.system && !target.file) return ERROR_MOD_NOT_FOUND;
    if (target.file && !data_only) *module = table.FindLoaded(*target.file);
    if (!*module) return table.AddFile(*target.file, data_only, module);
  }
  ++(*module)->references;
  return ERROR_SUCCESS;
}

HMODULE LoadOrFail(const char* call, LPCWSTR name, HANDLE reserved, DWORD flags) {
  std::scoped_lock lock(ModuleTable::Instance().lock());
  Module* module = nullptr;
  DWORD error = name && *name && !reserved ? ERROR_SUCCESS : ERROR_INVALID_PARAMETER;
  if (!error) error = PlannedFault(call, name).value_or(ERROR_SUCCESS);
  if (!error) error = CheckLoadFlags(name, flags);
  if (!error) error = Load(name, flags, &module);
  if (!error) return HandleOf(*module);
  SetLastError(error);
  return nullptr;
}

// Only what the library itself defines: dlsym would go on to the libraries it depends on.
void* OwnSymbol(void* library, const char* name) {
  void* const symbol = dlsym(library, name);
  Dl_info info;
  link_map* owner = nullptr;
  link_map* self = nullptr;
  if (!symbol || !dladdr1(symbol, &info, reinterpret_cast<void**>(&owner), RTLD_DL_LINKMAP)) return nullptr;
  if (dlinfo(library, RTLD_DI_LINKMAP, &self) != 0) return nullptr;
  return owner == self ? symbol : nullptr;
}

FARPROC Lookup(Module& module, LPCSTR name) {
  const bool ordinal = reinterpret_cast<UINT_PTR>(name) < 0x10000;
  if (ordinal) return nullptr;
  if (module.system) return FindSystemExport(*module.system, name, TheFacts());
  return module.library ? reinterpret_cast<FARPROC>(OwnSymbol(module.library, name)) : nullptr;
}

Module* ModuleOf(HMODULE handle) {
  ModuleTable& table = ModuleTable::Instance();
  Module* const module = handle ? table.Find(handle) : &table.program();
  if (!module) SetLastError(ERROR_MOD_NOT_FOUND);
  return module;
}

std::u16string PathOf(Module& module) {
  return &module == &ModuleTable::Instance().program() ? ProgramPath() : module.path;
}

}  // namespace
}  // namespace winhost

using namespace winhost;

HMODULE LoadLibraryW(LPCWSTR name) {
  if (const auto error = PlannedFault("LoadLibraryW", name ? name : u"")) {
    SetLastError(*error);
    return nullptr;
  }
  return LoadLibraryExW(name, nullptr, 0);
}

HMODULE LoadLibraryExW(LPCWSTR name, HANDLE reserved, DWORD flags) {
  return LoadOrFail("LoadLibraryExW", name, reserved, flags);
}

BOOL FreeLibrary(HMODULE handle) {
  ModuleTable& table = ModuleTable::Instance();
  std::scoped_lock lock(table.lock());
  Module* const module = table.Find(handle);
  if (module) table.Release(*module);
  if (!module) SetLastError(ERROR_MOD_NOT_FOUND);
  return module != nullptr;
}

HMODULE GetModuleHandleW(LPCWSTR name) {
  ModuleTable& table = ModuleTable::Instance();
  std::scoped_lock lock(table.lock());
  if (!name) return HandleOf(table.program());
  const std::u16string wanted = WithExtension(name);
  Module* const module = HasFolder(wanted) ? table.FindLoaded(wanted) : table.FindLoadedByName(wanted);
  if (module) return HandleOf(*module);
  SetLastError(ERROR_MOD_NOT_FOUND);
  return nullptr;
}

FARPROC GetProcAddress(HMODULE handle, LPCSTR name) {
  std::scoped_lock lock(ModuleTable::Instance().lock());
  Module* const module = ModuleOf(handle);
  if (!module) return nullptr;
  FARPROC const found = Lookup(*module, name);
  const std::u16string subject = found ? Wide(name) : std::u16string();
  const auto planned = found ? PlannedFault("GetProcAddress", subject) : std::nullopt;
  if (found && !planned) return found;
  SetLastError(planned.value_or(ERROR_PROC_NOT_FOUND));
  return nullptr;
}

DWORD GetModuleFileNameW(HMODULE handle, LPWSTR path, DWORD chars) {
  std::scoped_lock lock(ModuleTable::Instance().lock());
  Module* const module = ModuleOf(handle);
  if (!module) return 0;
  const std::u16string full = PathOf(*module);
  if (const auto error = PlannedFault("GetModuleFileNameW", full)) {
    SetLastError(*error);
    return 0;
  }
  const bool fits = full.size() < chars;
  const bool terminates = TheFacts().AtLeast(6, 0);
  std::copy_n(full.data(), std::min<std::size_t>(full.size(), chars), path);
  if (fits) path[full.size()] = 0;
  if (!fits && chars && terminates) path[chars - 1] = 0;
  SetLastError(fits || (chars && !terminates) ? ERROR_SUCCESS : ERROR_INSUFFICIENT_BUFFER);
  return fits ? static_cast<DWORD>(full.size()) : chars;
}
