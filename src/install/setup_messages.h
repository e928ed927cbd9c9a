// The two messages by which an installation speaks to the setup window. Posting never blocks; without a target window
// nothing is posted.
#pragma once

#include <windows.h>

namespace vanta {

inline constexpr UINT WM_SETUP_PROGRESS = WM_USER + 1000;  // lParam: whole percentage 0 to 99, only growing
inline constexpr UINT WM_SETUP_STATUS = WM_USER + 1001;    // lParam: SetupStatus

enum class SetupStatus : LONG {
  Started = 0,
  Finished = 1,
  Failed = 2,               // the installation stopped early
  ErrorUnzip = 3,           // an entry's information was unreadable
  ErrorCreateDir = 4,       // a folder could not be made
  ErrorWriteFile = 5,       // a file could not be extracted
  ErrorUninstallEntry = 6,  // some value of the uninstall entry was not written
  ErrorAppPaths = 7,        // some App Paths value was not written
  ErrorNoEmbeddedFile = 8,  // the payload resource is missing or empty
  ErrorEmbeddedFile = 9,    // the payload's entry count was unreadable
};

void PostSetupStatus(SetupStatus status);
// Posts a percentage that is greater than the last one, or the first of all.
void PostSetupProgress(LONG percent);

}  // namespace vanta
