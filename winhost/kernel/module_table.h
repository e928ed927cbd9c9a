// The modules of this process: the program, system libraries, libraries loaded from files.
#pragma once

#include <windows.h>

#include <list>
#include <mutex>
#include <optional>
#include <string>

#include "winhost/kernel/host_code.h"
#include "winhost/kernel/system_modules.h"

namespace winhost {

struct Module {
  std::u16string path;                   // full, as Windows sees it
  const SystemModule* system = nullptr;  // a system library …
  void* library = nullptr;               // … or one of Linux (dlopen) …
  std::optional<HostCode> code;          // … and what it was loaded from. Open as long as the library is: the dynamic
                                         // linker knows libraries by the descriptor's name
  HANDLE file = INVALID_HANDLE_VALUE;    // keeps the module's file from being deleted
  bool data_only = false;                // LOAD_LIBRARY_AS_DATAFILE: for its resources only
  unsigned references = 1;

  std::u16string_view Name() const;
};

class ModuleTable {
 public:
  static ModuleTable& Instance();

  // Held over loading and unloading, which may call back (DllMain): the loader lock.
  std::recursive_mutex& lock() { return lock_; }

  // All under the lock. Null when there is no such module.
  Module* Find(HMODULE handle);
  Module* FindLoaded(std::u16string_view full_path);
  Module* FindLoadedByName(std::u16string_view name);
  // One more reference to a system library, which joins the process where it was not part of it yet.
  Module* AddSystem(const SystemModule& system);
  // ERROR_SUCCESS and the module, or the error: of the file, of its format, ERROR_PROC_NOT_FOUND for symbols nobody
  // has, ERROR_DLL_INIT_FAILED when its DllMain refuses.
  DWORD AddFile(const std::u16string& full_path, bool data_only, Module** module);
  // Unloads with the last reference; the program and the system's libraries stay.
  void Release(Module& module);

  Module& program() { return modules_.front(); }

 private:
  ModuleTable();
  std::recursive_mutex lock_;
  std::list<Module> modules_;  // addresses are handles
};

HMODULE HandleOf(Module& module);

}  // namespace winhost
