// The product's line in the system's list of installed programs.
#pragma once

#include "base/text.h"

namespace vanta {

// Writes the eight values of the uninstall entry below `root`; all are attempted. True only when all were written.
bool WriteUninstallEntry(HKEY root);

// Bytes of all files in the folder and its subfolders, each as its low 32 bits, summed in 32 bits. What cannot be
// listed adds nothing, and neither does what lies behind a folder that is a link.
DWORD GetDirectorySize(const String& path);

}  // namespace vanta
