// The little that the library asks about the Windows it runs on.
#pragma once

namespace lumo {

// Windows Vista (6.0) and later.
bool IsVistaOrLater();
// Windows 8 (6.2) and later.
bool IsWindows8OrLater();
// The system's true major version, whatever the manifest declares.
unsigned SystemMajorVersion();

}  // namespace lumo
