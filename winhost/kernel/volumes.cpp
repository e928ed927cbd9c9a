#include <windows.h>

#include <algorithm>

#include "winhost/kernel/file_system.h"
#include "winhost/machine/faults.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

constexpr DWORD kLongestName = 255;

BOOL Fail(DWORD error) {
  SetLastError(error);
  return FALSE;
}

std::u16string_view OrCurrent(LPCWSTR path) { return path ? std::u16string_view(path) : std::u16string_view(u"\\"); }

// The drive that a path lies on. A root alone ("D:", "D:\") need not be looked up below.
DWORD DriveOf(std::u16string_view path, Drive** drive) {
  // "D:" alone would mean that drive's current folder; what is asked for is the drive.
  std::u16string text(path);
  if (text.size() == 2 && text[1] == u':') text += u'\\';
  Place place;
  if (const DWORD error = FileSystem::Current().LocateText(text, &place)) return error;
  FileStat stat;
  if (const DWORD error = FileSystem::Current().Stat(&place, &stat)) return error;
  if (!stat.directory) return ERROR_DIRECTORY;
  *drive = &place.folder->drive();
  return 0;
}

// Only a root with its separator will do: "C:\", "\\server\share\".
DWORD DriveOfRoot(std::u16string_view root, Drive** drive) {
  FullPath full;
  if (const DWORD error = FileSystem::Current().Parse(root, &full)) return error;
  if (full.kind == FullPath::Kind::Device) return ERROR_INVALID_NAME;
  if (!full.IsRoot()) return ERROR_DIR_NOT_ROOT;
  if (root.back() != u'\\' && root.back() != u'/') return ERROR_INVALID_NAME;
  return DriveOf(root, drive);
}

bool PutText(std::u16string_view text, LPWSTR buffer, DWORD length) {
  if (!buffer) return true;
  if (length <= text.size()) return false;
  std::copy(text.begin(), text.end(), buffer);
  buffer[text.size()] = 0;
  return true;
}

UINT KindOf(const Drive& drive) {
  const std::string& kind = drive.facts.kind;
  if (kind == "removable") return DRIVE_REMOVABLE;
  if (kind == "network") return DRIVE_REMOTE;
  return kind == "cdrom" ? DRIVE_CDROM : DRIVE_FIXED;
}

}  // namespace
}  // namespace winhost

using namespace winhost;

BOOL GetDiskFreeSpaceExW(LPCWSTR folder, PULARGE_INTEGER available, PULARGE_INTEGER total, PULARGE_INTEGER free) {
  const std::u16string_view path = OrCurrent(folder);
  Drive* drive = nullptr;
  DWORD error = PlannedFault("GetDiskFreeSpaceExW", path).value_or(0);
  // Two backslashes and nothing that could be a share: no drive, and nothing to look for either.
  if (error == 0) error = path == u"\\\\" ? DWORD{ERROR_INVALID_NAME} : DriveOf(path, &drive);
  if (error != 0) return Fail(error == ERROR_FILE_NOT_FOUND ? DWORD{ERROR_PATH_NOT_FOUND} : error);
  const std::uint64_t left = FileSystem::Current().FreeBytes(*drive);
  if (available) available->QuadPart = left;
  if (total) total->QuadPart = std::max<std::uint64_t>(drive->facts.total_bytes, left);
  if (free) free->QuadPart = left;
  return TRUE;
}

BOOL GetVolumeInformationW(LPCWSTR root, LPWSTR name, DWORD name_length, LPDWORD serial, LPDWORD component_length,
                           LPDWORD flags, LPWSTR file_system, DWORD file_system_length) {
  const std::u16string_view path = OrCurrent(root);
  Drive* drive = nullptr;
  DWORD error = PlannedFault("GetVolumeInformationW", path).value_or(0);
  if (error == 0) error = DriveOfRoot(path, &drive);
  if (error != 0) return Fail(error);
  if (!PutText(u"", name, name_length)) return Fail(ERROR_BAD_LENGTH);
  if (!PutText(Wide(drive->facts.file_system), file_system, file_system_length)) return Fail(ERROR_BAD_LENGTH);
  if (serial) *serial = static_cast<DWORD>(HashName(Wide(drive->linux_path)));
  if (component_length) *component_length = kLongestName;
  if (flags) {
    *flags = FILE_CASE_PRESERVED_NAMES | FILE_CASE_SENSITIVE_SEARCH | FILE_UNICODE_ON_DISK | FILE_PERSISTENT_ACLS |
             (drive->facts.read_only ? FILE_READ_ONLY_VOLUME : 0);
  }
  return TRUE;
}

UINT GetDriveTypeW(LPCWSTR root) {
  Drive* drive = nullptr;
  std::u16string path(OrCurrent(root));
  if (path.size() == 2 && path[1] == u':') path += u'\\';
  return DriveOfRoot(path.empty() ? std::u16string(u"\\") : path, &drive) == 0 ? KindOf(*drive) : DRIVE_NO_ROOT_DIR;
}

DWORD GetLogicalDrives() {
  DWORD mask = 0;
  for (const char16_t letter : FileSystem::Current().DriveLetters()) mask |= 1u << (letter - u'A');
  return mask;
}
