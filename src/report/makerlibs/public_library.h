// CVantaPublicDLLHelper: one of the maker's public libraries, loaded at most once a process and kept until it ends.
//
// Such a library exports InitLibs, which fills a table of functions, and CreateObject. Every call is stdcall.
#pragma once

#include <windows.h>

#include "base/lock.h"
#include "base/text.h"
#include "base/unique.h"
#include "base/late_function.h"
#include "report/makerlibs/maker_files.h"
#include "report/makerlibs/safe_loader.h"
#include "report/makerlibs/trusted_library.h"

namespace vanta {

using CreateObjectCall = HRESULT(WINAPI*)(const GUID& id, void** object);

template <class ExportFuncs>
class CVantaPublicDLLHelper {
 public:
  CVantaPublicDLLHelper() : lock_(new CriticalSection) {}
  virtual ~CVantaPublicDLLHelper() {
    delete lock_;
    if (module_) FreeLibrary(module_);
  }
  CVantaPublicDLLHelper(const CVantaPublicDLLHelper&) = delete;
  CVantaPublicDLLHelper& operator=(const CVantaPublicDLLHelper&) = delete;

  // The first call looks for `file_name` and loads it; this and all later calls answer what came of it. Any thread.
  bool Load(StringView file_name) {
    const Guard guard(*lock_);
    if (!tried_) {
      tried_ = true;
      loaded_ = LoadFrom(FindMakerFile(file_name));
    }
    return loaded_;
  }

  // Valid after Load returned true. CreateObject may be missing.
  const ExportFuncs& exports() const { return exports_; }
  CreateObjectCall create_object() const { return create_object_; }

 private:
  using InitLibsCall = int(WINAPI*)(ExportFuncs*);

  bool LoadFrom(const String& path) {
    if (!IsFullDrivePath(path)) return false;
    UniqueModule module(LoadTrustedLibrary(path));
    if (!module) return false;
    const auto init_libs = ExportOf<InitLibsCall>(module.Get(), "InitLibs");
    const auto maker = ExportOf<CreateObjectCall>(module.Get(), "CreateObject");
    if (!init_libs && !maker) return false;
    exports_.size = sizeof(exports_);
    if (init_libs && init_libs(&exports_) != 0) {
      exports_ = {};
      return false;
    }
    create_object_ = maker;
    module_ = module.Release();
    return true;
  }

  HMODULE module_ = nullptr;
  ExportFuncs exports_ = {};
  CreateObjectCall create_object_ = nullptr;
  CriticalSection* lock_;
  bool tried_ = false;
  bool loaded_ = false;
};

}  // namespace vanta
