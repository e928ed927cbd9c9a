#include "install/app_paths.h"

#include "base/registry.h"
#include "install/directories.h"
#include "install/product.h"
#include "install/product_config.h"
#include "install/updater_task.h"

namespace vanta {

bool WriteAppPaths(HKEY root) {
  const bool program = RegWriteString(root, kAppPathsKey, TEXT(""), InstalledFile(kViewerProgram));
  const bool folder = RegWriteString(root, kAppPathsKey, TEXT("Path"), GetInstallDirectory());
  return program && folder;
}

bool WriteAppPathsAndScheduleUpdater(HKEY root) {
  const bool written = WriteAppPaths(root);
  ScheduleUpdater();
  return written;
}

}  // namespace vanta
