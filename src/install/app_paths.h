// The App Paths entry, by which the viewer is started by name and a later setup finds the install directory.
#pragma once

#include <windows.h>

namespace vanta {

// Writes both values below `root`; both are attempted. True only when both were written.
bool WriteAppPaths(HKEY root);

// The same, and then the updater's task, whose outcome does not change the result.
bool WriteAppPathsAndScheduleUpdater(HKEY root);

}  // namespace vanta
