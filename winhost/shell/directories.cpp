#include <shlobj.h>
#include <windows.h>

#include <string>

#include "winhost/machine/faults.h"

namespace {

constexpr std::size_t kLongest = 247;  // a directory must leave room for a file's short name in it

DWORD MakeOne(const std::u16string& path) {
  return CreateDirectoryW(path.c_str(), nullptr) ? ERROR_SUCCESS : GetLastError();
}

bool IsFolder(const std::u16string& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// Where the first component below the root ends; npos: there is none.
std::size_t FirstEnd(const std::u16string& path) {
  const LPCWSTR below = PathSkipRootW(path.c_str());
  return path.find(u'\\', below ? static_cast<std::size_t>(below - path.c_str()) : 0);
}

DWORD MakeChain(std::u16string path) {
  if (PathIsRelativeW(path.c_str())) return ERROR_BAD_PATHNAME;
  if (path.size() > kLongest) return ERROR_FILENAME_EXCED_RANGE;
  PathRemoveBackslashW(path.data());
  path.resize(std::u16string_view(path.c_str()).size());
  DWORD error = MakeOne(path);
  if (error != ERROR_PATH_NOT_FOUND) return error;
  for (std::size_t end = FirstEnd(path); end != path.npos; end = path.find(u'\\', end + 1)) {
    const std::u16string above = path.substr(0, end);
    error = MakeOne(above);
    if (error != ERROR_SUCCESS && !IsFolder(above)) return error == ERROR_ALREADY_EXISTS ? ERROR_PATH_NOT_FOUND : error;
  }
  return MakeOne(path);
}

int Make(const char* function, LPCWSTR path) {
  if (!path) return ERROR_BAD_PATHNAME;
  const auto planned = winhost::PlannedFault(function, path);
  const DWORD error = planned ? *planned : MakeChain(path);
  if (error != ERROR_SUCCESS) SetLastError(error);
  return static_cast<int>(error);
}

}  // namespace

int SHCreateDirectory(HWND, PCWSTR path) { return Make("SHCreateDirectory", path); }
int SHCreateDirectoryExW(HWND, LPCWSTR path, const SECURITY_ATTRIBUTES*) { return Make("SHCreateDirectoryExW", path); }
