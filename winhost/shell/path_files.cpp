// The path functions that ask the file system.
#include <shlwapi.h>
#include <windows.h>

#include "winhost/machine/faults.h"

namespace {

// INVALID_FILE_ATTRIBUTES, with the last error set, when there is nothing or a failure is planned.
DWORD Attributes(const char* function, LPCWSTR path) {
  if (const auto error = winhost::PlannedFault(function, path)) {
    SetLastError(*error);
    return INVALID_FILE_ATTRIBUTES;
  }
  return GetFileAttributesW(path);
}

}  // namespace

BOOL PathFileExistsW(LPCWSTR path) { return path && Attributes("PathFileExistsW", path) != INVALID_FILE_ATTRIBUTES; }

// True is FILE_ATTRIBUTE_DIRECTORY here, not TRUE.
BOOL PathIsDirectoryW(LPCWSTR path) {
  if (!path || !*path || PathIsUNCServerW(path)) return FALSE;
  const DWORD attributes = Attributes("PathIsDirectoryW", path);
  return attributes == INVALID_FILE_ATTRIBUTES ? FALSE : static_cast<BOOL>(attributes & FILE_ATTRIBUTE_DIRECTORY);
}
