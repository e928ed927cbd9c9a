#include "install/deferred_delete.h"

#include "base/format.h"
#include "base/paths.h"

namespace vanta {
namespace {

void DeleteAtRestart(const String& path) { MoveFileExW(path.c_str(), nullptr, MOVEFILE_DELAY_UNTIL_REBOOT); }

String MoveOutOfTheWay(const String& path) {
  const String name = Format(TEXT("%s.%lu"), path, GetTickCount());
  DeleteFileW(name.c_str());
  return MoveFileExW(path.c_str(), name.c_str(), MOVEFILE_REPLACE_EXISTING) ? name : String();
}

}  // namespace

bool DeleteFileOrDefer(const String& path, bool rename_first) {
  if (!PathExists(path)) return true;
  if (DeleteFileW(path.c_str()) || !PathExists(path)) return true;
  SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
  if (DeleteFileW(path.c_str())) return true;
  const String doomed = rename_first ? MoveOutOfTheWay(path) : path;
  // Where the move failed the old name stays in use, and the new file may take it before the restart.
  if (!doomed.empty()) DeleteAtRestart(doomed);
  return false;
}

}  // namespace vanta
