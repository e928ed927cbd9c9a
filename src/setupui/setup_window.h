// The setup window: the installer's one screen.
#pragma once

#include <windows.h>

namespace vanta {

// Creates the window of SetupWnd.xml and shows its first page; an installation that needs no question has been started
// by then. The window posts WM_QUIT when it is destroyed. None when it cannot be created. UI thread only.
HWND CreateSetupWindow();

}  // namespace vanta
