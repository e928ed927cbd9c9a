#include "report/makerlibs/trusted_library.h"

#include <vector>

#include "base/paths.h"
#include "report/makerlibs/base_library.h"
#include "report/makerlibs/file_signature.h"
#include "report/makerlibs/safe_loader.h"
#include "report/makerlibs/self_protection.h"

namespace vanta {
namespace {

// Empty when no such module is loaded.
String PathOfLoadedModule(const String& name) {
  const HMODULE module = GetModuleHandleW(name.c_str());
  if (!module) return {};
  WCHAR path[MAX_PATH] = {};
  const DWORD length = GetModuleFileNameW(module, path, MAX_PATH);
  return length < MAX_PATH ? String(path, length) : String();
}

bool SignatureHolds(HANDLE file, const String& path) {
  const SignatureResult result = CheckFileSignature(file, path);
  return result.Accepted() && result.level != TrustRefused && result.level != TrustUndecided;
}

}  // namespace

HMODULE LoadTrustedLibrary(const String& path) {
  const String loaded = PathOfLoadedModule(FileNameOf(path));
  const String& used = loaded.empty() ? path : loaded;
  const UniqueFile file = OpenForCheck(used);  // held until the loader has the file
  if (!file) return nullptr;
  if (AskSelfProtection() != SelfProtection::Yes && !SignatureHolds(file.Get(), used)) {
    SetLastError(ERROR_ACCESS_DENIED);
    return nullptr;
  }
  return LoadLibrarySafely(used);
}

bool IsTrustedMakerFile(const String& path) {
  LONG level = TrustUndecided;
  return LoadBaseLibrary() && FileExists(path) && GetFileTrustLevel(path, &level) && level == TrustReporter;
}

}  // namespace vanta
