// The maker's browser on this machine, for this user.
#pragma once

#include "base/text.h"

namespace vanta {

enum BrowserState : int {
  BrowserAbsent = 0,
  BrowserPresent = 1,        // its main program is there; the only state that reports count as "has it"
  BrowserCoreInstalled = 2,  // only the core program, with an uninstall entry
  BrowserCoreOnly = 3,       // only the core program
};

BrowserState DetectBrowser();

// Full path of the browser's installer, which lies three levels below the application directory; empty: none found.
String FindBrowserInstaller();

}  // namespace vanta
