// Starting the installed product.
#pragma once

#include "base/text.h"

namespace vanta {

// Starts the installed program for the desktop's user, unless the setup is silent, and with the option "assoc" asks the
// viewer to make itself the default picture viewer. Programs without the maker's signature are not started.
void runApp();

// Starts a program with the rights of the desktop's user rather than the setup's elevated ones, by having the desktop's
// shell start it. Null stands for none. False where that was not possible; nothing is started then. Needs no COM, may
// block while the shell answers.
bool LaunchAsDesktopUser(const WCHAR* verb, const String& file, const WCHAR* parameters, const WCHAR* directory,
                         int show);

}  // namespace vanta
