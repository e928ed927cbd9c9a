#include "winhost/kernel/files.h"

#include <sys/stat.h>
#include <unistd.h>
#include <windows.h>

#include <cerrno>

#include "winhost/kernel/open_file.h"
#include "winhost/machine/faults.h"

namespace winhost {
namespace {

FILETIME ToFileTime(std::uint64_t time) { return {static_cast<DWORD>(time), static_cast<DWORD>(time >> 32)}; }

BOOL Fail(DWORD error) {
  SetLastError(error);
  return FALSE;
}

// The fault plan and a null path, which every call on a path begins with.
DWORD Begin(const char* operation, LPCWSTR path) {
  if (!path) return ERROR_PATH_NOT_FOUND;
  return PlannedFault(operation, path).value_or(0);
}

HANDLE Opened(DWORD error, std::shared_ptr<KernelObject> object, bool existed, DWORD disposition) {
  if (error != 0) {
    SetLastError(error);
    return INVALID_HANDLE_VALUE;
  }
  if (disposition == CREATE_ALWAYS || disposition == OPEN_ALWAYS) SetLastError(existed ? ERROR_ALREADY_EXISTS : 0);
  return MakeHandle(std::move(object));
}

// NUL is the one device that answers as a file does.
DWORD StatOf(LPCWSTR path, Place* place, FileStat* stat) {
  FileSystem& files = FileSystem::Current();
  FullPath full;
  if (const DWORD error = files.Parse(path, &full)) return error;
  if (full.kind == FullPath::Kind::Device) {
    stat->attributes = FILE_ATTRIBUTE_ARCHIVE;
    return full.text == u"NUL" ? 0 : ERROR_FILE_NOT_FOUND;
  }
  if (const DWORD error = files.Locate(full, place)) return error;
  const DWORD error = files.Stat(place, stat);
  return error == 0 && full.trailing_separator && !stat->directory ? ERROR_INVALID_NAME : error;
}

DWORD Delete(LPCWSTR path) {
  FileSystem& files = FileSystem::Current();
  FullPath full;
  if (const DWORD error = files.Parse(path, &full)) return error;
  if (full.kind == FullPath::Kind::Device) return ERROR_ACCESS_DENIED;
  Place place;
  if (const DWORD error = files.Locate(full, &place)) return error;
  FileStat stat;
  if (const DWORD error = files.Stat(&place, &stat)) return error;
  if (full.trailing_separator) return stat.directory ? ERROR_PATH_NOT_FOUND : ERROR_INVALID_NAME;
  if (stat.directory || (stat.attributes & FILE_ATTRIBUTE_READONLY)) return ERROR_ACCESS_DENIED;
  if (const DWORD error = files.MayChange(place)) return error;
  bool open = false;
  if (const DWORD error = files.shares()->AskToDelete(place.Key(), true, &open)) return error;
  if (open) return 0;
  if (unlinkat(place.folder->fd(), place.on_disk.c_str(), 0) != 0) {
    return errno == ENOENT ? ERROR_FILE_NOT_FOUND : ERROR_ACCESS_DENIED;
  }
  files.TakeBytes(place.folder->drive(), -static_cast<std::int64_t>(stat.size));
  files.Removed(place);
  return 0;
}

DWORD AttributesOf(std::u16string_view path, DWORD* attributes) {
  FullPath full;
  if (const DWORD error = FileSystem::Current().Parse(path, &full)) return error;
  if (full.kind == FullPath::Kind::Device) return full.text == u"NUL" ? 0 : ERROR_FILE_NOT_FOUND;
  if (const DWORD error = FileSystem::Current().Attributes(full, attributes)) return error;
  return full.trailing_separator && !(*attributes & FILE_ATTRIBUTE_DIRECTORY) ? ERROR_INVALID_NAME : 0;
}

DWORD ChangeAttributes(LPCWSTR path, DWORD attributes) {
  Place place;
  FileStat stat;
  if (const DWORD error = StatOf(path, &place, &stat)) return error;
  if (!place.folder) return ERROR_ACCESS_DENIED;
  FileSystem& files = FileSystem::Current();
  if (const DWORD error = files.MayChange(place)) return error;
  if ((attributes & FILE_ATTRIBUTE_DIRECTORY) && !stat.directory) return ERROR_INVALID_PARAMETER;
  const std::string linux_path = place.LinuxPath();
  return WriteFileAttributes({-1, linux_path.c_str()}, stat.directory, attributes) ? 0 : ERROR_ACCESS_DENIED;
}

}  // namespace

HANDLE OpenImage(std::u16string_view path) {
  const std::u16string text(path);
  std::shared_ptr<KernelObject> object;
  bool existed = false;
  DWORD error = Begin("OpenImage", text.c_str());
  if (error == 0) {
    error =
        OpenFile(text, {GENERIC_READ | GENERIC_EXECUTE, FILE_SHARE_READ | FILE_SHARE_DELETE, OPEN_EXISTING, 0, true},
                 &object, &existed);
  }
  return Opened(error, std::move(object), existed, OPEN_EXISTING);
}

std::optional<int> LinuxDescriptor(HANDLE file) {
  const auto object = ObjectAs<FileObject>(file);
  return object ? std::optional(object->fd()) : std::nullopt;
}

std::u16string PathOfFile(HANDLE file) {
  const auto object = ObjectAs<FileObject>(file);
  return object ? object->path() : std::u16string();
}

}  // namespace winhost

using namespace winhost;

HANDLE CreateFileW(LPCWSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES, DWORD disposition,
                   DWORD flags_and_attributes, HANDLE) {
  std::shared_ptr<KernelObject> object;
  bool existed = false;
  DWORD error = Begin("CreateFileW", path);
  if (error == 0) error = OpenFile(path, {access, share, disposition, flags_and_attributes, false}, &object, &existed);
  return Opened(error, std::move(object), existed, disposition);
}

BOOL DeleteFileW(LPCWSTR path) {
  DWORD error = Begin("DeleteFileW", path);
  if (error == 0) error = Delete(path);
  return error == 0 ? TRUE : Fail(error);
}

DWORD GetFileAttributesW(LPCWSTR path) {
  DWORD attributes = FILE_ATTRIBUTE_ARCHIVE;
  DWORD error = Begin("GetFileAttributesW", path);
  if (error == 0) {
    const std::u16string_view text(path);
    if (FileSystem::Current().QuickAttributes(text, &attributes)) return attributes;
    error = AttributesOf(text, &attributes);
  }
  if (error == 0) return attributes;
  SetLastError(error);
  return INVALID_FILE_ATTRIBUTES;
}

BOOL GetFileAttributesExW(LPCWSTR path, GET_FILEEX_INFO_LEVELS level, LPVOID information) {
  if (level != GetFileExInfoStandard || !information) return Fail(ERROR_INVALID_PARAMETER);
  Place place;
  FileStat stat;
  DWORD error = Begin("GetFileAttributesExW", path);
  if (error == 0) error = StatOf(path, &place, &stat);
  if (error != 0) return Fail(error);
  *static_cast<WIN32_FILE_ATTRIBUTE_DATA*>(information) = {stat.attributes,
                                                           ToFileTime(stat.creation),
                                                           ToFileTime(stat.access),
                                                           ToFileTime(stat.modification),
                                                           static_cast<DWORD>(stat.size >> 32),
                                                           static_cast<DWORD>(stat.size)};
  return TRUE;
}

BOOL SetFileAttributesW(LPCWSTR path, DWORD attributes) {
  DWORD error = Begin("SetFileAttributesW", path);
  if (error == 0) error = ChangeAttributes(path, attributes);
  return error == 0 ? TRUE : Fail(error);
}

// The run-time's view: writing asks for the read-only attribute alone, and a folder never has it in this sense.
int _waccess(const WCHAR* path, int mode) {
  if (!path || (mode & ~6) != 0) {
    errno = EINVAL;
    return -1;
  }
  const DWORD attributes = GetFileAttributesW(path);
  if (attributes == INVALID_FILE_ATTRIBUTES) {
    errno = GetLastError() == ERROR_ACCESS_DENIED ? EACCES : ENOENT;
    return -1;
  }
  if ((mode & 2) && (attributes & FILE_ATTRIBUTE_READONLY) && !(attributes & FILE_ATTRIBUTE_DIRECTORY)) {
    errno = EACCES;
    return -1;
  }
  return 0;
}
