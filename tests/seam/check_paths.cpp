// The path functions: answers on which Windows and this side agree.
#include <windows.h>

#include <shlobj.h>
#include <shlwapi.h>

#include <string>

#include "seam_check.h"

namespace {

using Text = std::basic_string<WCHAR>;

static_assert(MAX_PATH == 260);
static_assert(CSIDL_PROGRAMS == 2 && CSIDL_DESKTOP == 0 && CSIDL_RECENT == 8 && CSIDL_APPDATA == 0x1a);
static_assert(CSIDL_SYSTEM == 0x25 && CSIDL_PROGRAM_FILES == 0x26 && CSIDL_FLAG_CREATE == 0x8000);

struct Pair {
  const WCHAR* in;
  const WCHAR* out;
};

Text Canonical(const WCHAR* path) {
  WCHAR result[MAX_PATH];
  return PathCanonicalizeW(result, path) ? Text(result) : Text(TEXT("failed"));
}

Text Combined(const WCHAR* folder, const WCHAR* file) {
  WCHAR result[MAX_PATH];
  return PathCombineW(result, folder, file) ? Text(result) : Text(TEXT("failed"));
}

Text WithoutName(const WCHAR* path) {
  Text text = path;
  PathRemoveFileSpecW(text.data());
  return text.c_str();
}

bool CanonicalizeRemovesDots() {
  const Pair rows[] = {{TEXT(""), TEXT("\\")},
                       {TEXT("C:"), TEXT("C:\\")},
                       {TEXT("C:\\a\\.\\b\\..\\c"), TEXT("C:\\a\\c")},
                       {TEXT("C:\\a\\..\\..\\b"), TEXT("C:\\b")},
                       {TEXT("C:\\a\\.."), TEXT("C:\\")},
                       {TEXT("a\\..\\b"), TEXT("\\b")},
                       {TEXT("C:\\a/../b"), TEXT("C:\\a/../b")},
                       {TEXT("C:\\a\\\\b"), TEXT("C:\\a\\\\b")}};
  for (const Pair& row : rows) {
    if (Canonical(row.in) != row.out) return false;
  }
  return true;
}

bool CombineJoinsAndReplaces() {
  return Combined(TEXT("C:\\a"), TEXT("b/c")) == TEXT("C:\\a\\b/c") &&
         Combined(TEXT("C:\\a\\"), TEXT("..\\b")) == TEXT("C:\\b") &&
         Combined(TEXT("C:\\a"), TEXT("D:\\b")) == TEXT("D:\\b") &&
         Combined(TEXT("C:\\a\\b"), TEXT("\\c")) == TEXT("C:\\c") &&
         Combined(TEXT("C:\\a"), TEXT("")) == TEXT("C:\\a") && Combined(TEXT("D:"), TEXT("b")) == TEXT("D:\\b");
}

bool CombineRefusesWhatDoesNotFit() {
  const Text folder = TEXT("C:\\") + Text(200, 'a');
  return Combined(folder.c_str(), Text(55, 'b').c_str()).size() == 259 &&
         Combined(folder.c_str(), Text(56, 'b').c_str()) == TEXT("failed");
}

bool RemoveFileSpecStopsAtRoots() {
  const Pair rows[] = {{TEXT("C:\\a\\b"), TEXT("C:\\a")},  {TEXT("C:\\a"), TEXT("C:\\")}, {TEXT("C:\\"), TEXT("C:\\")},
                       {TEXT("C:a"), TEXT("C:")},          {TEXT("a"), TEXT("")},         {TEXT("\\a"), TEXT("\\")},
                       {TEXT("C:\\a\\b/c"), TEXT("C:\\a")}};
  for (const Pair& row : rows) {
    if (WithoutName(row.in) != row.out) return false;
  }
  return true;
}

bool PrefixIsAWholeComponent() {
  return PathIsPrefixW(TEXT("C:\\a"), TEXT("c:\\A\\b")) && !PathIsPrefixW(TEXT("C:\\a"), TEXT("C:\\ab")) &&
         !PathIsPrefixW(TEXT("C:\\a\\"), TEXT("C:\\a\\b")) && PathIsPrefixW(TEXT("C:\\"), TEXT("C:\\a"));
}

bool DirectoriesAreAnsweredBySixteen() {
  WCHAR folder[MAX_PATH];
  if (!GetWindowsDirectoryW(folder, MAX_PATH)) return false;
  return PathIsDirectoryW(folder) == 16 && PathFileExistsW(folder) == TRUE && !PathIsDirectoryW(TEXT(""));
}

bool FolderChainsWantFullPaths() {
  WCHAR folder[MAX_PATH];
  return SHCreateDirectory(nullptr, TEXT("relative\\folder")) == ERROR_BAD_PATHNAME &&
         GetWindowsDirectoryW(folder, MAX_PATH) && SHCreateDirectory(nullptr, folder) == ERROR_ALREADY_EXISTS;
}

constexpr SeamCheck kChecks[] = {
    {"PathCanonicalizeW removes dots and nothing else", CanonicalizeRemovesDots},
    {"PathCombineW joins relative names and takes full ones", CombineJoinsAndReplaces},
    {"PathCombineW refuses more than 259 characters", CombineRefusesWhatDoesNotFit},
    {"PathRemoveFileSpecW stops at roots and knows no slash", RemoveFileSpecStopsAtRoots},
    {"PathIsPrefixW compares whole components", PrefixIsAWholeComponent},
    {"PathIsDirectoryW answers FILE_ATTRIBUTE_DIRECTORY", DirectoriesAreAnsweredBySixteen},
    {"SHCreateDirectory wants a full path", FolderChainsWantFullPaths},
};

}  // namespace

std::span<const SeamCheck> PathChecks() { return kChecks; }
