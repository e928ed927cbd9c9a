// Files: sizes and values, opening, sharing, deletion, attributes, times.
#include <windows.h>

#include <string>
#include <type_traits>

#include "seam_check.h"

namespace {

using Text = std::basic_string<WCHAR>;

static_assert(sizeof(WCHAR) == 2 && sizeof(LONG) == 4 && sizeof(DWORD) == 4 && sizeof(LONGLONG) == 8);
static_assert(sizeof(FILETIME) == 8 && sizeof(SYSTEMTIME) == 16 && sizeof(TIME_ZONE_INFORMATION) == 172);
static_assert(sizeof(WIN32_FIND_DATAW) == 592 && sizeof(WIN32_FILE_ATTRIBUTE_DATA) == 36);
static_assert(sizeof(BY_HANDLE_FILE_INFORMATION) == 52 && sizeof(LARGE_INTEGER) == 8);
static_assert(sizeof(OVERLAPPED) == 2 * sizeof(ULONG_PTR) + 8 + sizeof(HANDLE));
static_assert(CREATE_NEW == 1 && CREATE_ALWAYS == 2 && OPEN_EXISTING == 3 && OPEN_ALWAYS == 4);
static_assert(GENERIC_READ == 0x80000000u && GENERIC_WRITE == 0x40000000u && DELETE == 0x10000);
static_assert(FILE_ATTRIBUTE_READONLY == 1 && FILE_ATTRIBUTE_HIDDEN == 2 && FILE_ATTRIBUTE_SYSTEM == 4);
static_assert(FILE_ATTRIBUTE_DIRECTORY == 16 && FILE_ATTRIBUTE_ARCHIVE == 32 && FILE_ATTRIBUTE_NORMAL == 128);
static_assert(INVALID_FILE_ATTRIBUTES == 0xFFFFFFFFu && MOVEFILE_REPLACE_EXISTING == 1);
static_assert(MOVEFILE_DELAY_UNTIL_REBOOT == 4 && FILE_FLAG_BACKUP_SEMANTICS == 0x02000000);
static_assert(std::is_same_v<decltype(&CreateFileW),
                             HANDLE(WINAPI*)(LPCWSTR, DWORD, DWORD, LPSECURITY_ATTRIBUTES, DWORD, DWORD, HANDLE)>);
static_assert(std::is_same_v<decltype(&MoveFileExW), BOOL(WINAPI*)(LPCWSTR, LPCWSTR, DWORD)>);
static_assert(
    std::is_same_v<decltype(&SetFileTime), BOOL(WINAPI*)(HANDLE, const FILETIME*, const FILETIME*, const FILETIME*)>);

constexpr DWORD kAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// A folder of its own below the temporary one, emptied of the few names that the checks use.
class Scratch {
 public:
  Scratch() {
    WCHAR temp[MAX_PATH];
    const DWORD length = GetTempPathW(MAX_PATH, temp);
    folder_ = Text(temp, length) + TEXT("VantaSeamCheck");
    for (size_t at = 3; (at = folder_.find('\\', at)) != Text::npos; ++at) {
      CreateDirectoryW(folder_.substr(0, at).c_str(), nullptr);
    }
    CreateDirectoryW(folder_.c_str(), nullptr);
    Clean();
  }
  ~Scratch() {
    Clean();
    RemoveDirectoryW(folder_.c_str());
  }
  Text operator/(const WCHAR* name) const { return folder_ + TEXT("\\") + name; }

 private:
  void Clean() const {
    for (const WCHAR* name : {TEXT("a.txt"), TEXT("b.txt"), TEXT("c.doc")}) {
      SetFileAttributesW((*this / name).c_str(), FILE_ATTRIBUTE_NORMAL);
      DeleteFileW((*this / name).c_str());
    }
    RemoveDirectoryW((*this / TEXT("sub")).c_str());
  }
  Text folder_;
};

struct Opened {
  HANDLE handle;
  explicit operator bool() const { return handle != INVALID_HANDLE_VALUE; }
  ~Opened() { Close(); }
  void Close() {
    if (handle != INVALID_HANDLE_VALUE) CloseHandle(handle);
    handle = INVALID_HANDLE_VALUE;
  }
};

Opened Open(const Text& path, DWORD access, DWORD share, DWORD disposition, DWORD attributes = FILE_ATTRIBUTE_NORMAL) {
  return {CreateFileW(path.c_str(), access, share, nullptr, disposition, attributes, nullptr)};
}

// 0 when it opens.
DWORD OpenError(const Text& path, DWORD access, DWORD share, DWORD disposition, DWORD attributes = 0) {
  return Open(path, access, share, disposition, attributes) ? 0 : GetLastError();
}

DWORD ErrorOf(BOOL result) { return result ? 0 : GetLastError(); }

bool DispositionsAnswer() {
  const Scratch scratch;
  const Text a = scratch / TEXT("a.txt");
  if (OpenError(a, GENERIC_WRITE, 0, OPEN_EXISTING) != ERROR_FILE_NOT_FOUND) return false;
  if (OpenError(a, GENERIC_WRITE, 0, CREATE_NEW) != 0) return false;
  if (OpenError(a, GENERIC_WRITE, 0, CREATE_NEW) != ERROR_FILE_EXISTS) return false;
  if (OpenError(a, GENERIC_WRITE, 0, CREATE_ALWAYS) != 0) return false;
  const Opened again = Open(a, GENERIC_WRITE, 0, OPEN_ALWAYS);
  return again && GetLastError() == ERROR_ALREADY_EXISTS;
}

bool BadPathsAnswer() {
  const Scratch scratch;
  struct Row {
    Text path;
    DWORD error;
  } rows[] = {{Text(), ERROR_PATH_NOT_FOUND},
              {scratch / TEXT("none\\a.txt"), ERROR_PATH_NOT_FOUND},
              {scratch / TEXT("a*.txt"), ERROR_INVALID_NAME},
              {scratch / TEXT("a<.txt"), ERROR_INVALID_NAME},
              {scratch / TEXT("."), ERROR_ACCESS_DENIED}};
  for (const Row& row : rows) {
    if (OpenError(row.path, GENERIC_READ, kAll, OPEN_EXISTING) != row.error) return false;
  }
  return true;
}

bool SharingIsAskedBothWays() {
  const Scratch scratch;
  const Text a = scratch / TEXT("a.txt");
  struct Row {
    DWORD access, share, second_access, second_share, error;
  } rows[] = {{GENERIC_WRITE, 0, GENERIC_READ, kAll, ERROR_SHARING_VIOLATION},
              {GENERIC_WRITE, FILE_SHARE_READ, GENERIC_READ, FILE_SHARE_READ, ERROR_SHARING_VIOLATION},
              {GENERIC_WRITE, FILE_SHARE_READ, GENERIC_READ, kAll, 0},
              {GENERIC_READ, FILE_SHARE_READ, DELETE, kAll, ERROR_SHARING_VIOLATION},
              {GENERIC_READ, 0, 0, 0, 0}};
  for (const Row& row : rows) {
    const Opened first = Open(a, row.access, row.share, OPEN_ALWAYS);
    if (OpenError(a, row.second_access, row.second_share, OPEN_EXISTING) != row.error) return false;
  }
  return true;
}

bool DeletionWaitsForTheLastHandle() {
  const Scratch scratch;
  const Text a = scratch / TEXT("a.txt");
  Opened file = Open(a, GENERIC_WRITE, FILE_SHARE_READ, CREATE_ALWAYS);
  if (ErrorOf(DeleteFileW(a.c_str())) != ERROR_SHARING_VIOLATION) return false;
  file.Close();
  Opened shared = Open(a, GENERIC_READ, kAll, OPEN_EXISTING);
  if (!DeleteFileW(a.c_str())) return false;
  shared.Close();
  return OpenError(a, GENERIC_READ, kAll, OPEN_EXISTING) == ERROR_FILE_NOT_FOUND;
}

bool ReadOnlyFilesAreProtected() {
  const Scratch scratch;
  const Text a = scratch / TEXT("a.txt");
  OpenError(a, GENERIC_WRITE, 0, CREATE_ALWAYS, FILE_ATTRIBUTE_READONLY);
  return GetFileAttributesW(a.c_str()) == (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE) &&
         ErrorOf(DeleteFileW(a.c_str())) == ERROR_ACCESS_DENIED &&
         OpenError(a, GENERIC_WRITE, 0, CREATE_ALWAYS) == ERROR_ACCESS_DENIED;
}

bool HiddenFilesAreReplacedByName() {
  const Scratch scratch;
  const Text a = scratch / TEXT("a.txt");
  return OpenError(a, GENERIC_WRITE, 0, CREATE_ALWAYS, FILE_ATTRIBUTE_HIDDEN) == 0 &&
         OpenError(a, GENERIC_WRITE, 0, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL) == ERROR_ACCESS_DENIED &&
         OpenError(a, GENERIC_WRITE, 0, CREATE_ALWAYS, FILE_ATTRIBUTE_HIDDEN) == 0;
}

bool MovesReplaceWhenAskedTo() {
  const Scratch scratch;
  const Text a = scratch / TEXT("a.txt"), b = scratch / TEXT("b.txt");
  OpenError(a, GENERIC_WRITE, 0, CREATE_ALWAYS);
  OpenError(b, GENERIC_WRITE, 0, CREATE_ALWAYS);
  return ErrorOf(MoveFileExW(a.c_str(), b.c_str(), 0)) == ERROR_ALREADY_EXISTS &&
         MoveFileExW(a.c_str(), b.c_str(), MOVEFILE_REPLACE_EXISTING) &&
         ErrorOf(MoveFileExW(a.c_str(), b.c_str(), 0)) == ERROR_FILE_NOT_FOUND;
}

bool TimesAreKept() {
  const Scratch scratch;
  const Text a = scratch / TEXT("a.txt");
  const FILETIME creation{0x1234000, 0x01C00000}, access{0x5678000, 0x01C10000}, modification{0x9ABC000, 0x01C20000};
  {
    const Opened file = Open(a, GENERIC_WRITE, 0, CREATE_ALWAYS);
    if (!SetFileTime(file.handle, &creation, &access, &modification)) return false;
  }
  WIN32_FILE_ATTRIBUTE_DATA data;
  if (!GetFileAttributesExW(a.c_str(), GetFileExInfoStandard, &data)) return false;
  return CompareFileTime(&data.ftLastAccessTime, &access) == 0 &&
         CompareFileTime(&data.ftLastWriteTime, &modification) == 0;
}

bool FoldersAreMadeOneLevelAtATime() {
  const Scratch scratch;
  const Text sub = scratch / TEXT("sub");
  return ErrorOf(CreateDirectoryW((scratch / TEXT("sub\\deep")).c_str(), nullptr)) == ERROR_PATH_NOT_FOUND &&
         CreateDirectoryW(sub.c_str(), nullptr) &&
         ErrorOf(CreateDirectoryW(sub.c_str(), nullptr)) == ERROR_ALREADY_EXISTS &&
         ErrorOf(DeleteFileW(sub.c_str())) == ERROR_ACCESS_DENIED && RemoveDirectoryW(sub.c_str());
}

bool ListingsBeginWithTheDotsAndEnd() {
  const Scratch scratch;
  OpenError(scratch / TEXT("a.txt"), GENERIC_WRITE, 0, CREATE_ALWAYS);
  OpenError(scratch / TEXT("c.doc"), GENERIC_WRITE, 0, CREATE_ALWAYS);
  Text names;
  WIN32_FIND_DATAW data;
  const HANDLE find = FindFirstFileW((scratch / TEXT("*")).c_str(), &data);
  if (find == INVALID_HANDLE_VALUE) return false;
  do {
    names += data.cFileName;
    names += '|';
  } while (FindNextFileW(find, &data));
  const bool ended = GetLastError() == ERROR_NO_MORE_FILES;
  FindClose(find);
  const HANDLE none = FindFirstFileW((scratch / TEXT("*.exe")).c_str(), &data);
  return ended && names == TEXT(".|..|a.txt|c.doc|") && none == INVALID_HANDLE_VALUE &&
         GetLastError() == ERROR_FILE_NOT_FOUND;
}

bool IniValuesAreTrimmed() {
  const Scratch scratch;
  const Text ini = scratch / TEXT("a.txt");
  WCHAR text[20];
  return WritePrivateProfileStringW(TEXT("Main"), TEXT("key"), TEXT("  some \" text  "), ini.c_str()) &&
         WritePrivateProfileStringW(TEXT("Main"), TEXT("number"), TEXT("12x"), ini.c_str()) &&
         GetPrivateProfileStringW(TEXT("MAIN"), TEXT("Key"), TEXT(""), text, 20, ini.c_str()) == 11 &&
         Text(text) == TEXT("some \" text") &&
         GetPrivateProfileIntW(TEXT("main"), TEXT("number"), 7, ini.c_str()) == 12 &&
         GetPrivateProfileIntW(TEXT("main"), TEXT("none"), 7, ini.c_str()) == 7;
}

constexpr SeamCheck kChecks[] = {
    {"CreateFileW's dispositions", DispositionsAnswer},
    {"CreateFileW's answers to bad paths", BadPathsAnswer},
    {"share modes are asked both ways", SharingIsAskedBothWays},
    {"deletion waits for the last handle", DeletionWaitsForTheLastHandle},
    {"read-only files are protected", ReadOnlyFilesAreProtected},
    {"CREATE_ALWAYS must name the hidden attribute", HiddenFilesAreReplacedByName},
    {"MoveFileExW replaces only when asked to", MovesReplaceWhenAskedTo},
    {"SetFileTime's times are kept", TimesAreKept},
    {"folders are made one level at a time", FoldersAreMadeOneLevelAtATime},
    {"listings begin with the dots and end with ERROR_NO_MORE_FILES", ListingsBeginWithTheDotsAndEnd},
    {"INI values are trimmed, numbers read as far as they go", IniValuesAreTrimmed},
};

}  // namespace

std::span<const SeamCheck> FileChecks() { return kChecks; }
