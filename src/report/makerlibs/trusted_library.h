// Loading a maker's library only after a decision that it may be trusted.
#pragma once

#include <windows.h>

#include "base/text.h"

namespace vanta {

// Loads the library at a full path with a drive letter, or, when a module of that file name is loaded already, the
// library at that module's path. Unless the self-protection driver vouches for this process, the file must carry the
// maker's signature. The file cannot be changed between the check and the loading. Null: not there, refused or not
// loadable. The caller frees the module.
HMODULE LoadTrustedLibrary(const String& path);

// Whether the base library (loaded now, if it can be) gives the existing file the crash reporter's level.
bool IsTrustedMakerFile(const String& path);

}  // namespace vanta
