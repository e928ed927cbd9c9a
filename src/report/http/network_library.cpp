#include "report/http/network_library.h"

#include "base/late_function.h"
#include "base/lock.h"
#include "base/paths.h"
#include "base/registry.h"
#include "base/unique.h"
#include "report/makerlibs/base_library.h"
#include "report/makerlibs/file_signature.h"
#include "report/makerlibs/maker_files.h"
#include "report/makerlibs/safe_loader.h"
#include "report/makerlibs/self_protection.h"

namespace vanta {
namespace {

constexpr WCHAR kNetworkLibrary[] = TEXT("vantanetbase.dll");
constexpr const WCHAR* kSuiteKey = TEXT("SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Bastion.exe");
constexpr long kInitialiseSockets = 2;

// With a backslash at its end; empty without the suite.
String SuiteFolder() {
  String folder;
  RegReadString(HKEY_LOCAL_MACHINE, kSuiteKey, TEXT("Path"), &folder);
  if (!folder.empty() && folder.back() != TEXT('\\')) folder += TEXT('\\');
  return folder;
}

bool LiesIn(const String& path, const String& folder) {
  return !folder.empty() && path.size() > folder.size() && EqualNoCase(path.substr(0, folder.size()), folder);
}

bool IsTrusted(const String& path) {
  LONG level = TrustUndecided;
  return LoadBaseLibrary() && GetFileTrustLevel(path, &level) && level != TrustRefused;
}

UniqueModule LoadFrom(const String& path) {
  if (!FileExists(path)) return {};
  if (LiesIn(path, SuiteFolder()) && AskSelfProtection() == SelfProtection::Yes) {
    return UniqueModule(LoadLibraryW(path.c_str()));
  }
  const UniqueFile file = OpenForCheck(path);  // held until the loader has the file
  if (!file || !IsTrusted(path)) return {};
  return UniqueModule(LoadLibrarySafely(path));
}

// One a process; it stays loaded until the end.
class NetworkLibrary {
 public:
  int Load() {
    const Guard guard(lock_);
    if (state_ == NetworkNotTried) state_ = Initialise(LoadFrom(FindMakerFile(kNetworkLibrary)));
    return state_ == NetworkLoaded ? 0 : NetworkFailed;
  }

  const CVantaNetExportFuncs* functions() {
    const Guard guard(lock_);
    return state_ == NetworkLoaded ? &functions_ : nullptr;
  }

 private:
  using InitLibsCall = int(WINAPI*)(CVantaNetExportFuncs*);

  NetworkLibraryState Initialise(UniqueModule module) {
    const auto init_libs = module ? ExportOf<InitLibsCall>(module.Get(), "InitLibs") : nullptr;
    if (!init_libs) return NetworkFailed;
    functions_ = {};
    functions_.size = sizeof functions_;
    if (init_libs(&functions_) < 0) return NetworkFailed;
    if (!functions_.global_init || functions_.global_init(kInitialiseSockets) != EasyOk) return NetworkFailed;
    module_ = static_cast<UniqueModule&&>(module);
    return NetworkLoaded;
  }

  CriticalSection lock_;
  NetworkLibraryState state_ = NetworkNotTried;
  UniqueModule module_;
  CVantaNetExportFuncs functions_ = {};
};
constinit Lazy<NetworkLibrary> library;

}  // namespace

int LoadNetworkLibrary() { return library.Get().Load(); }

const CVantaNetExportFuncs* GetNetworkFunctions() { return library.Get().functions(); }

}  // namespace vanta
