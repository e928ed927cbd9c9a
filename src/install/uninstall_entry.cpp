#include "install/uninstall_entry.h"

#include "base/deployment.h"
#include "base/format.h"
#include "base/paths.h"
#include "base/registry.h"
#include "base/unique.h"
#include "install/directories.h"
#include "install/product.h"
#include "install/product_config.h"
#include "install/version.h"

namespace vanta {
namespace {

String Today() {
  SYSTEMTIME now = {};
  GetLocalTime(&now);
  return Format(TEXT("%04d%02d%02d"), now.wYear, now.wMonth, now.wDay);
}

bool WriteSize(HKEY root) {
  const DWORD kibibytes = GetDirectorySize(GetInstallDirectory()) >> 10;
  return RegWriteDword(root, kUninstallKey, TEXT("EstimatedSize"), kibibytes);
}

bool IsRealSubfolder(const WIN32_FIND_DATAW& found) {
  const StringView name = found.cFileName;
  // A link could lead back here, and what it leads to is not the product's.
  return !(found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) && name != TEXT(".") && name != TEXT("..");
}

DWORD SizeOf(const String& folder, const WIN32_FIND_DATAW& found) {
  if (!(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) return found.nFileSizeLow;
  return IsRealSubfolder(found) ? GetDirectorySize(JoinPath(folder, found.cFileName)) : 0;
}

}  // namespace

DWORD GetDirectorySize(const String& path) {
  const String pattern = path.empty() ? String() : JoinPath(path, TEXT("*"));
  if (pattern.empty()) return 0;
  WIN32_FIND_DATAW found = {};
  const UniqueFind search(FindFirstFileW(pattern.c_str(), &found));
  if (!search) return 0;
  DWORD bytes = 0;
  do {
    bytes += SizeOf(path, found);
  } while (FindNextFileW(search.Get(), &found));
  return bytes;
}

bool WriteUninstallEntry(HKEY root) {
  bool all = true;
  const auto write = [&](const WCHAR* name, const String& text) {
    all = RegWriteString(root, kUninstallKey, name, text) && all;
  };
  write(TEXT("DisplayIcon"), InstalledFile(kViewerProgram));
  write(TEXT("DisplayName"), kDisplayName);
  write(TEXT("DisplayVersion"), GetOwnVersion());
  all = WriteSize(root) && all;
  write(TEXT("InstallDate"), Today());
  write(TEXT("InstallLocation"), GetInstallDirectory());
  write(TEXT("Publisher"), GetDeployment().publisher);
  write(TEXT("UninstallString"), InstalledFile(kUninstaller));
  return all;
}

}  // namespace vanta
