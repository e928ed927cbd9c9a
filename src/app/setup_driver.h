// The run modes: a setup window with an installer thread, a silent installation, and the refusals.
#pragma once

#include <windows.h>

namespace vanta {

// Chooses and runs the run mode; once, on the main thread, after the skin is loaded. In window mode it returns when the
// message loop has ended. True: the process may exit with 0.
bool runSetup();

// Prepares and starts one installation: on a thread of its own in window mode, on the calling thread in silent mode,
// where it returns when the installation is over. False: nothing was started, because the payload could not be opened
// or, in window mode, the thread not be made; the window has been told.
bool runInstaller();

// Brings an existing window, of whatever process, to the foreground.
void ActivateWindow(HWND window);

// The window is gone: asks a running installation to stop before its next file and waits for it, at most 10 seconds.
void EndInstallation();

}  // namespace vanta
