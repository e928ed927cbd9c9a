#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <windows.h>

#include <algorithm>
#include <cerrno>

#include "winhost/kernel/file_object.h"
#include "winhost/kernel/paths.h"
#include "winhost/machine/clock.h"
#include "winhost/machine/faults.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

// Room for a file name in the old 8.3 form must remain in a folder.
constexpr PathLimit kFolderLimit{247, ERROR_FILENAME_EXCED_RANGE};

BOOL Fail(DWORD error) {
  SetLastError(error);
  return FALSE;
}

DWORD Make(LPCWSTR path) {
  FileSystem& files = FileSystem::Current();
  FullPath full;
  if (const DWORD error = files.Parse(path, &full, kFolderLimit)) return error;
  if (full.kind == FullPath::Kind::Device) return ERROR_DIRECTORY;
  Place place;
  if (const DWORD error = files.Locate(full, &place)) return error;
  if (place.IsRoot()) return full.kind == FullPath::Kind::Unc ? ERROR_ALREADY_EXISTS : ERROR_ACCESS_DENIED;
  FileStat stat;
  const DWORD found = files.Stat(&place, &stat);
  if (found == 0) return ERROR_ALREADY_EXISTS;
  if (found != ERROR_FILE_NOT_FOUND) return found;
  if (const DWORD error = files.MayChange(place)) return error;
  if (mkdirat(place.folder->fd(), place.on_disk.c_str(), 0755) != 0) {
    return errno == EEXIST         ? ERROR_ALREADY_EXISTS
           : errno == ENOENT       ? ERROR_PATH_NOT_FOUND
           : errno == ENOSPC       ? ERROR_DISK_FULL
           : errno == ENAMETOOLONG ? ERROR_FILENAME_EXCED_RANGE
                                   : ERROR_ACCESS_DENIED;
  }
  files.Added(place);
  if (HasOwnClock(files.machine())) {
    const std::uint64_t now = MachineTime100ns();
    WriteFileTimes({-1, place.LinuxPath().c_str()}, {now, now, now}, false);
  }
  return 0;
}

DWORD Remove(LPCWSTR path) {
  FileSystem& files = FileSystem::Current();
  Place place;
  if (const DWORD error = files.LocateText(path, &place)) return error;
  if (place.IsRoot()) return ERROR_ACCESS_DENIED;
  FileStat stat;
  if (const DWORD error = files.Stat(&place, &stat)) return error;
  if (!stat.directory) return ERROR_DIRECTORY;
  if (const DWORD error = files.MayChange(place)) return error;
  if (stat.attributes & FILE_ATTRIBUTE_READONLY) return ERROR_ACCESS_DENIED;
  if (EqualNoCase(files.CurrentDirectory(), place.WindowsPath())) return ERROR_SHARING_VIOLATION;
  if (unlinkat(place.folder->fd(), place.on_disk.c_str(), AT_REMOVEDIR) != 0) {
    return errno == ENOTEMPTY || errno == EEXIST ? ERROR_DIR_NOT_EMPTY : ERROR_ACCESS_DENIED;
  }
  files.Removed(place);
  files.ForgetFolders();
  return 0;
}

DWORD Change(LPCWSTR path) {
  FileSystem& files = FileSystem::Current();
  Place place;
  if (const DWORD error = files.LocateText(path, &place, {257, ERROR_FILENAME_EXCED_RANGE})) return error;
  FileStat stat;
  if (const DWORD error = files.Stat(&place, &stat)) return error;
  if (!stat.directory) return ERROR_DIRECTORY;
  files.ChangeDirectory(place.WindowsPath());
  return 0;
}

// What Windows answers for a text and a buffer: its length, or the room it needs.
DWORD PutText(std::u16string_view text, DWORD length, LPWSTR buffer) {
  if (!buffer || length <= text.size()) return static_cast<DWORD>(text.size() + 1);
  std::copy(text.begin(), text.end(), buffer);
  buffer[text.size()] = 0;
  return static_cast<DWORD>(text.size());
}

std::u16string EnvironmentText(LPCWSTR name) {
  WCHAR text[MAX_PATH];
  const DWORD length = GetEnvironmentVariableW(name, text, MAX_PATH);
  return length < MAX_PATH ? std::u16string(text, length) : std::u16string();
}

std::u16string TempFolder() {
  for (LPCWSTR name : {TEXT("TMP"), TEXT("TEMP"), TEXT("USERPROFILE")}) {
    std::u16string folder = EnvironmentText(name);
    if (!folder.empty()) return folder;
  }
  return u"C:\\Windows";
}

}  // namespace
}  // namespace winhost

using namespace winhost;

BOOL CreateDirectoryW(LPCWSTR path, LPSECURITY_ATTRIBUTES) {
  DWORD error = path ? PlannedFault("CreateDirectoryW", path).value_or(0) : DWORD{ERROR_PATH_NOT_FOUND};
  if (error == 0) error = Make(path);
  return error == 0 ? TRUE : Fail(error);
}

BOOL RemoveDirectoryW(LPCWSTR path) {
  DWORD error = path ? PlannedFault("RemoveDirectoryW", path).value_or(0) : DWORD{ERROR_PATH_NOT_FOUND};
  if (error == 0) error = Remove(path);
  return error == 0 ? TRUE : Fail(error);
}

BOOL SetCurrentDirectoryW(LPCWSTR path) {
  DWORD error = path ? PlannedFault("SetCurrentDirectoryW", path).value_or(0) : DWORD{ERROR_INVALID_NAME};
  if (error == 0) error = Change(path);
  return error == 0 ? TRUE : Fail(error);
}

DWORD GetCurrentDirectoryW(DWORD length, LPWSTR buffer) { return PutText(CurrentDirectory(), length, buffer); }

DWORD GetFullPathNameW(LPCWSTR path, DWORD length, LPWSTR buffer, LPWSTR* file_part) {
  FullPath full;
  const DWORD error =
      path ? FileSystem::Current().Parse(path, &full, {32767, ERROR_FILENAME_EXCED_RANGE}) : DWORD{ERROR_INVALID_NAME};
  if (error != 0 && (error != ERROR_INVALID_NAME || full.text.empty())) {
    SetLastError(error);
    return 0;
  }
  std::u16string text = full.kind == FullPath::Kind::Device ? u"\\\\.\\" + full.text : full.text;
  if (full.trailing_separator) text += u'\\';
  const DWORD result = PutText(text, length, buffer);
  if (file_part) {
    const std::size_t cut = text.rfind(u'\\');
    const bool has_name = result == text.size() && cut != text.npos && cut + 1 < text.size();
    *file_part = has_name ? buffer + cut + 1 : nullptr;
  }
  return result;
}

DWORD GetLongPathNameW(LPCWSTR path, LPWSTR buffer, DWORD length) {
  DWORD error = path ? PlannedFault("GetLongPathNameW", path).value_or(0) : DWORD{ERROR_INVALID_PARAMETER};
  Place place;
  FileStat stat;
  if (error == 0) error = FileSystem::Current().LocateText(path, &place);
  if (error == 0) error = FileSystem::Current().Stat(&place, &stat);
  if (error == 0) return PutText(place.WindowsPath(), length, buffer);
  SetLastError(error);
  return 0;
}

DWORD GetTempPathW(DWORD length, LPWSTR buffer) {
  std::u16string folder = TempFolder();
  if (folder.back() != u'\\') folder += u'\\';
  return PutText(folder, length, buffer);
}

UINT GetTempFileNameW(LPCWSTR folder, LPCWSTR prefix, UINT unique, LPWSTR name) {
  const std::u16string base = std::u16string(folder) + (*folder && folder[wcslen(folder) - 1] == u'\\' ? u"" : u"\\") +
                              std::u16string(prefix).substr(0, 3);
  UINT number = unique ? unique & 0xFFFF : (GetTickCount() & 0xFFFF);
  for (int attempt = 0; attempt < 0x10000; ++attempt, ++number) {
    if ((number & 0xFFFF) == 0) number = 1;
    static constexpr char16_t kDigits[] = u"0123456789abcdef";
    std::u16string digits;
    for (UINT rest = number & 0xFFFF; rest != 0; rest >>= 4) digits.insert(digits.begin(), kDigits[rest & 15]);
    const std::u16string path = base + digits + u".tmp";
    if (path.size() >= MAX_PATH) break;
    if (unique == 0) {
      const HANDLE file =
          CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
      if (file == INVALID_HANDLE_VALUE) {
        if (GetLastError() == ERROR_FILE_EXISTS || GetLastError() == ERROR_SHARING_VIOLATION) continue;
        break;
      }
      CloseHandle(file);
    }
    std::copy_n(path.c_str(), path.size() + 1, name);
    return number & 0xFFFF;
  }
  if (GetLastError() == ERROR_PATH_NOT_FOUND) SetLastError(ERROR_DIRECTORY);
  return 0;
}
