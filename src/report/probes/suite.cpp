#include "report/probes/suite.h"

#include "base/lock.h"
#include "base/paths.h"
#include "base/registry.h"

namespace vanta {
namespace {

constexpr WCHAR kSuiteProgram[] = TEXT("bastion.exe");

StringView WithoutTrailingSeparator(StringView path) {
  while (!path.empty() && path.back() == TEXT('\\')) path.remove_suffix(1);
  return path;
}

StringView LastComponent(StringView path) {
  path = WithoutTrailingSeparator(path);
  const size_t separator = path.rfind(TEXT('\\'));
  return separator == StringView::npos ? path : path.substr(separator + 1);
}

// One level up; empty above the top.
StringView Up(StringView path) {
  path = WithoutTrailingSeparator(path);
  const size_t separator = path.rfind(TEXT('\\'));
  return separator == StringView::npos ? StringView() : WithoutTrailingSeparator(path.substr(0, separator));
}

bool IsNamed(StringView path, StringView name) { return EqualAsciiNoCase(LastComponent(path), name); }

struct SuiteDirectory {
  SuiteDirectory() {
    RegReadString(HKEY_LOCAL_MACHINE, TEXT("SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\bastion.exe"),
                  TEXT("Path"), &path);
    if (path.empty()) path = SuiteDirectoryAbove(ModuleDirectory());
  }
  String path;
};
constinit Lazy<SuiteDirectory> g_suite_directory;

}  // namespace

String SuiteDirectoryAbove(StringView own_directory) {
  if (!IsNamed(own_directory, TEXT("AppShelf"))) return {};
  StringView up = Up(own_directory);
  if (IsNamed(up, TEXT("SML"))) up = Up(Up(up));
  return IsNamed(up, TEXT("Bastion")) ? String(up) : String();
}

String GetSuiteDirectory(const WCHAR* name) {
  const String& directory = g_suite_directory.Get().path;
  if (directory.empty() || !name || !*name) return directory;
  return JoinPath(directory, name);
}

bool IsSuiteInstalled() {
  const String program = GetSuiteDirectory(kSuiteProgram);
  return !program.empty() && FileExists(program);
}

}  // namespace vanta
