#include <sys/stat.h>
#include <unistd.h>
#include <windows.h>

#include <cerrno>
#include <nlohmann/json.hpp>

#include "winhost/kernel/file_system.h"
#include "winhost/kernel/open_file.h"
#include "winhost/machine/faults.h"
#include "winhost/machine/journal.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

struct End {
  Place place;
  FileStat stat;
};

// Whether any file in the folder or below is open; such a folder cannot be moved.
bool AnyOpenBelow(FileSystem& files, const std::filesystem::path& folder) {
  std::error_code error;
  const auto is_open = [&](const std::filesystem::path& path) {
    struct stat plain;
    return ::stat(path.c_str(), &plain) == 0 && files.shares()->AnyOpenIn(plain.st_dev, plain.st_ino);
  };
  if (is_open(folder)) return true;
  for (std::filesystem::recursive_directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    if (entry->is_directory(error) && is_open(entry->path())) return true;
  }
  return false;
}

DWORD MayTakeAway(FileSystem& files, const End& from) {
  if (from.place.IsRoot()) return ERROR_ACCESS_DENIED;
  if (const DWORD error = files.MayChange(from.place)) return error;
  if (from.stat.directory) return AnyOpenBelow(files, from.place.LinuxPath()) ? ERROR_ACCESS_DENIED : 0;
  return files.shares()->AskToMove(from.place.Key());
}

// `same`: only the spelling changes.
DWORD MayReplace(FileSystem& files, const End& from, Place* to, DWORD flags, bool* same) {
  if (const DWORD error = files.MayChange(*to)) return error;
  FileStat stat;
  const DWORD found = files.Stat(to, &stat);
  *same = found == 0 && stat.inode == from.stat.inode && stat.device == from.stat.device;
  if (found == ERROR_FILE_NOT_FOUND || *same) return 0;
  if (found != 0) return found;
  if ((flags & MOVEFILE_REPLACE_EXISTING) == 0) return ERROR_ALREADY_EXISTS;
  if (stat.directory || from.stat.directory || (stat.attributes & FILE_ATTRIBUTE_READONLY)) return ERROR_ACCESS_DENIED;
  if (files.shares()->IsOpen(to->Key())) return ERROR_ACCESS_DENIED;
  files.TakeBytes(to->folder->drive(), -static_cast<std::int64_t>(stat.size));
  return 0;
}

DWORD Rename(FileSystem& files, const End& from, Place& to) {
  if (renameat(from.place.folder->fd(), from.place.on_disk.c_str(), to.folder->fd(), to.on_disk.c_str()) != 0) {
    return errno == ENOENT ? ERROR_FILE_NOT_FOUND : errno == EINVAL ? ERROR_SHARING_VIOLATION : ERROR_ACCESS_DENIED;
  }
  files.shares()->Move(from.place.Key(), to.Key());
  files.Removed(from.place);
  files.Added(to);
  if (from.stat.directory) files.ForgetFolders();
  return 0;
}

DWORD JournalDeferred(const End& from, LPCWSTR to, DWORD flags) {
  if (!Machine::Current().facts().elevated) return ERROR_ACCESS_DENIED;
  nlohmann::json entry{{"from", Narrow(from.place.WindowsPath())}, {"to", nullptr}};
  if (to) {
    FullPath full;
    if (const DWORD error = FileSystem::Current().Parse(to, &full)) return error;
    entry["to"] = Narrow(full.text);
    entry["replace"] = (flags & MOVEFILE_REPLACE_EXISTING) != 0;
  }
  WriteJournal("deferred", std::move(entry));
  return 0;
}

DWORD Move(LPCWSTR from_path, LPCWSTR to_path, DWORD flags) {
  FileSystem& files = FileSystem::Current();
  if (!to_path && (flags & MOVEFILE_DELAY_UNTIL_REBOOT) == 0) return ERROR_INVALID_PARAMETER;
  if ((flags & MOVEFILE_DELAY_UNTIL_REBOOT) && (flags & MOVEFILE_COPY_ALLOWED)) return ERROR_INVALID_PARAMETER;
  End from;
  if (const DWORD error = files.LocateText(from_path, &from.place)) return error;
  if (const DWORD error = files.Stat(&from.place, &from.stat)) return error;
  if (flags & MOVEFILE_DELAY_UNTIL_REBOOT) return JournalDeferred(from, to_path, flags);
  Place to;
  std::u16string new_name;
  if (const DWORD error = files.LocateText(to_path, &to, {}, &new_name)) return error;
  if (to.IsRoot()) return ERROR_ACCESS_DENIED;
  if (const DWORD error = MayTakeAway(files, from)) return error;
  if (&from.place.folder->drive() != &to.folder->drive()) {
    if ((flags & MOVEFILE_COPY_ALLOWED) == 0 || from.stat.directory) return ERROR_NOT_SAME_DEVICE;
    const bool keep = (flags & MOVEFILE_REPLACE_EXISTING) == 0;
    if (!CopyFileW(from_path, to_path, keep))
      return GetLastError() == ERROR_FILE_EXISTS ? ERROR_ALREADY_EXISTS : GetLastError();
    return DeleteFileW(from_path) ? 0 : GetLastError();
  }
  bool same = false;
  if (const DWORD error = MayReplace(files, from, &to, flags, &same)) return error;
  if (same || to.missing) to.on_disk = Narrow(new_name);
  return Rename(files, from, to);
}

DWORD CopyBytes(HANDLE from, HANDLE to) {
  std::string buffer(1 << 16, '\0');
  for (;;) {
    DWORD got = 0, put = 0;
    if (!ReadFile(from, buffer.data(), static_cast<DWORD>(buffer.size()), &got, nullptr)) return GetLastError();
    if (got == 0) return 0;
    if (!WriteFile(to, buffer.data(), got, &put, nullptr)) return GetLastError();
  }
}

DWORD Copy(LPCWSTR from_path, LPCWSTR to_path, bool fail_if_exists) {
  const HANDLE from =
      CreateFileW(from_path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
  if (from == INVALID_HANDLE_VALUE) return GetLastError();
  BY_HANDLE_FILE_INFORMATION information{};
  DWORD error = GetFileInformationByHandle(from, &information) ? 0 : GetLastError();
  HANDLE to = INVALID_HANDLE_VALUE;
  if (error == 0) {
    to = CreateFileW(to_path, GENERIC_WRITE, 0, nullptr, fail_if_exists ? CREATE_NEW : CREATE_ALWAYS,
                     information.dwFileAttributes, nullptr);
    if (to == INVALID_HANDLE_VALUE) error = GetLastError();
  }
  if (error == 0) error = CopyBytes(from, to);
  if (error == 0 && !SetFileTime(to, nullptr, nullptr, &information.ftLastWriteTime)) error = GetLastError();
  if (to != INVALID_HANDLE_VALUE) CloseHandle(to);
  CloseHandle(from);
  if (error != 0 && to != INVALID_HANDLE_VALUE) DeleteFileW(to_path);
  return error;
}

}  // namespace
}  // namespace winhost

BOOL MoveFileExW(LPCWSTR from, LPCWSTR to, DWORD flags) {
  DWORD error = from ? winhost::PlannedFault("MoveFileExW", from).value_or(0) : DWORD{ERROR_PATH_NOT_FOUND};
  if (error == 0) error = winhost::Move(from, to, flags);
  if (error != 0) SetLastError(error);
  return error == 0;
}

BOOL MoveFileW(LPCWSTR from, LPCWSTR to) { return MoveFileExW(from, to, MOVEFILE_COPY_ALLOWED); }

BOOL CopyFileW(LPCWSTR from, LPCWSTR to, BOOL fail_if_exists) {
  DWORD error = from && to ? winhost::PlannedFault("CopyFileW", from).value_or(0) : DWORD{ERROR_PATH_NOT_FOUND};
  if (error == 0) error = winhost::Copy(from, to, fail_if_exists != FALSE);
  if (error != 0) SetLastError(error);
  return error == 0;
}
