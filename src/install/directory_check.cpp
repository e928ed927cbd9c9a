// The user's choice of a folder: CheckChosenDirectory and what it asks.
#include "install/directories.h"

#include "base/format.h"
#include "base/paths.h"
#include "base/unique.h"
#include "install/deferred_delete.h"
#include "install/product.h"

#include <io.h>

namespace vanta {
namespace {

constexpr ULONGLONG kMinimumFreeBytes = 104857600;  // more than this must be free
constexpr int kMayWrite = 2;
constexpr int kMayReadAndWrite = 6;

String FileSystemName(const String& path) {
  WCHAR name[MAX_PATH] = {};
  const String root = path.substr(0, 3);
  if (!GetVolumeInformationW(root.c_str(), nullptr, 0, nullptr, nullptr, nullptr, name, MAX_PATH)) return {};
  return name;
}

// Volumes of another system that pretend to be writable.
bool IsHfs(const String& path) {
  const String name = FileSystemName(path);
  return name == TEXT("HFS") || name == TEXT("HFS+");
}

bool ProbeWriting(const String& directory) {
  const String name = Format(TEXT("HITTEST_%lu.tmp"), GetTickCount());
  const String probe = JoinPath(ReplaceAll(directory, TEXT("/"), TEXT("\\")), name);
  if (probe.empty()) return false;
  UniqueFile file(CreateFileW(probe.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                              FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return false;
  file.Reset();
  DeleteFileOrDefer(probe, false);
  return true;
}

bool FreeBytes(const String& drive, ULONGLONG* bytes) {
  ULARGE_INTEGER available = {};
  if (!GetDiskFreeSpaceExW(drive.c_str(), &available, nullptr, nullptr)) return false;
  *bytes = available.QuadPart;
  return true;
}

}  // namespace

bool IsDirectoryWritable(const String& path) {
  if (!DirectoryExists(path)) return false;
  if (_waccess(path.c_str(), kMayWrite) != 0 || _waccess(path.c_str(), kMayReadAndWrite) != 0) return false;
  return !IsHfs(path) && ProbeWriting(path);
}

DirectoryCheck CheckChosenDirectory(const String& path, String* directory) {
  if (path.empty()) return DirectoryCheck::Ignored;
  if (!PathExists(path)) return DirectoryCheck::Invalid;
  // Before the probe, whose name is longer than the product's folder: it would only say "not writable".
  const String joined = JoinPath(path, kProductFolder);
  if (joined.empty()) return DirectoryCheck::Invalid;
  if (!IsDirectoryWritable(path)) return DirectoryCheck::NotWritable;
  if (path.size() < 3) return DirectoryCheck::Invalid;
  ULONGLONG free_bytes = 0;
  if (!FreeBytes(path.substr(0, 2), &free_bytes)) return DirectoryCheck::Invalid;
  if (free_bytes <= kMinimumFreeBytes) return DirectoryCheck::NoSpace;
  *directory = joined;
  return DirectoryCheck::Accepted;
}

const WCHAR* DirectoryTip(DirectoryCheck check) {
  switch (check) {
    case DirectoryCheck::Invalid:
      return TEXT("STRID_PICTOR_TIPS_DIR_UNVALID");
    case DirectoryCheck::NotWritable:
      return TEXT("STRID_PICTOR_TIPS_DIR_NOTWRITE");
    case DirectoryCheck::NoSpace:
      return TEXT("STRID_PICTOR_TIPS_DIR_NOSPACE");
    case DirectoryCheck::Accepted:
    case DirectoryCheck::Ignored:
      break;
  }
  return TEXT("");
}

}  // namespace vanta
