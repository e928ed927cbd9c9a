// The installation itself: the steps that put the product on the machine, in their order.
#pragma once

#include <windows.h>

namespace vanta {

// Runs all steps on the calling thread, which is given a COM apartment meanwhile. The results are the machine, the
// messages to the setup window and the log; the payload archive is closed afterwards.
void RunInstaller();

// The same on a thread of its own, which nobody joins. False when it could not be started.
bool StartInstallerThread();

// True when no installer thread runs any more, at the latest after `milliseconds`.
bool WaitForInstallerThread(DWORD milliseconds);

}  // namespace vanta
