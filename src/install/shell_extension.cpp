#include "install/shell_extension.h"

#include "base/format.h"
#include "base/paths.h"
#include "install/deferred_delete.h"
#include "install/product.h"
#include "report/probes/os_version.h"

#include <shellapi.h>
#include <shlobj.h>

namespace vanta {
namespace {

void StartRegistrar(const String& parameters) {
  const String system = GetSpecialFolder(CSIDL_SYSTEM, false);
  // A bare name would be searched for, and the setup runs elevated.
  if (system.empty()) return;
  ShellExecuteW(nullptr, nullptr, JoinPath(system, TEXT("regsvr32.exe")).c_str(), parameters.c_str(), nullptr, SW_HIDE);
}

}  // namespace

String GetShellExtensionPath() { return InstalledFile(Is64BitOs() ? kShellExtension64 : kShellExtension32); }

void ReleaseShellExtension() {
  const String library = GetShellExtensionPath();
  if (!FileExists(library)) return;
  StartRegistrar(Format(TEXT("/u /s \"%s\""), library));
  DeleteFileOrDefer(InstalledFile(kShellExtension64), true);
  DeleteFileOrDefer(InstalledFile(kShellExtension32), true);
}

void RegisterShellExtension() {
  const String library = GetShellExtensionPath();
  if (FileExists(library)) StartRegistrar(Format(TEXT("/s \"%s\""), library));
}

}  // namespace vanta
