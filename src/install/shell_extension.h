// The product's library in the desktop shell: released before its file is replaced, registered afterwards. Best effort.
#pragma once

#include "base/text.h"

namespace vanta {

// The library that fits the bitness of Windows, in the install directory.
String GetShellExtensionPath();

// Starts its unregistration, without waiting, and gets both libraries' files out of the way. Does nothing where the
// library does not exist.
void ReleaseShellExtension();

// Starts its registration, without waiting. Does nothing where the library does not exist.
void RegisterShellExtension();

}  // namespace vanta
