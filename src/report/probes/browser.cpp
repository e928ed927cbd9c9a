#include "report/probes/browser.h"

#include <windows.h>
#include <shlwapi.h>

#include "base/file_version.h"
#include "base/format.h"
#include "base/paths.h"
#include "base/registry.h"

namespace vanta {
namespace {

constexpr WCHAR kMain[] = TEXT("Skyline.exe");
constexpr WCHAR kCore[] = TEXT("Skylinecore.exe");
constexpr WCHAR kUninstallKey[] = TEXT("SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Skyline6");

// Places that name the directory the browser was installed to.
struct DirectorySource {
  const WCHAR* key;
  const WCHAR* value;
  const WCHAR* below;  // what to add to the value
};
constexpr DirectorySource kDirectorySources[] = {
    {TEXT("Software\\Vanta\\Skyline6\\Chrome"), TEXT("last_install_path"), TEXT("\\Skyline6\\Application")},
    {TEXT("Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Skyline6.exe"), TEXT("Path"), TEXT("")},
    {TEXT("Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Skyline6"), TEXT("InstallLocation"), TEXT("")},
};

String InstallerBelow(const String& directory) {
  for (const WCHAR* program : {kMain, kCore}) {
    const String path = JoinPath(directory, program);
    if (!FileExists(path)) continue;
    return Format(TEXT("%s\\%s\\Installer\\setup.exe"), directory, GetFileVersionString(path));
  }
  return {};
}

// Empty when the result would not fit a path.
String CombinePaths(const String& path, const WCHAR* more) {
  WCHAR combined[MAX_PATH] = {};
  return PathCombineW(combined, path.c_str(), more) ? String(combined) : String();
}

String UserText(const WCHAR* key, const WCHAR* name) {
  String text;
  RegReadString(HKEY_CURRENT_USER, key, name, &text);
  return text;
}

}  // namespace

String FindBrowserInstaller() {
  String installer =
      UserText(TEXT("Software\\Vanta\\Skyline6\\Update\\ClientState\\{02E720BD-2B50-4404-947C-65DBE64F6970}"),
               TEXT("UninstallString"));
  for (const DirectorySource& source : kDirectorySources) {
    if (!installer.empty()) break;
    const String value = UserText(source.key, source.value);
    if (!value.empty()) installer = InstallerBelow(value + source.below);
  }
  return installer;
}

BrowserState DetectBrowser() {
  const String installer = FindBrowserInstaller();
  if (installer.empty()) return BrowserAbsent;
  const String application = CombinePaths(installer, TEXT("..\\..\\.."));
  if (application.empty()) return BrowserAbsent;
  if (FileExists(JoinPath(application, kMain))) return BrowserPresent;
  if (!FileExists(JoinPath(application, kCore))) return BrowserAbsent;
  return RegKeyExists(HKEY_CURRENT_USER, kUninstallKey, 0) ? BrowserCoreInstalled : BrowserCoreOnly;
}

}  // namespace vanta
