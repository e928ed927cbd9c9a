#include "install/directories.h"

#include "app/install_state.h"
#include "base/paths.h"
#include "base/registry.h"
#include "install/product.h"
#include "install/product_config.h"

#include <shlobj.h>

namespace vanta {
namespace {

String RegisteredDirectory() {
  String path;
  RegReadString(HKEY_LOCAL_MACHINE, kAppPathsKey, TEXT("Path"), &path);
  return path.size() < MAX_PATH && PathExists(path) ? path : String();
}

String DefaultDirectory() {
  const String program_files = GetSpecialFolder(CSIDL_PROGRAM_FILES, false);
  const String joined = program_files.empty() ? String() : JoinPath(program_files, kProductFolder);
  return joined.empty() ? String(kProductFolder) : joined;
}

}  // namespace

void ResolveInstallDirectory() {
  const String registered = RegisteredDirectory();
  GetInstallState().SetDirectory(registered.empty() ? DefaultDirectory() : registered);
}

String GetInstallDirectory() {
  if (GetInstallState().Directory().empty()) ResolveInstallDirectory();
  return GetInstallState().Directory();
}

void SetInstallDirectory(const WCHAR* path) {
  if (path) GetInstallState().SetDirectory(path);
}

}  // namespace vanta
