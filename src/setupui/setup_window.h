// The setup window: the installer's one screen.
#pragma once

#include <windows.h>

namespace vanta {

// Creates the window "SetupWnd" and shows it; it posts WM_QUIT when it is destroyed. Main thread. None when it cannot
// be created. This build carries no window drawing, so there is never one.
HWND CreateSetupWindow();

}  // namespace vanta
