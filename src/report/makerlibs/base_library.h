// The maker's base library "VantaBase.dll", as far as the setup uses it: what it thinks of a file.
#pragma once

#include "base/text.h"
#include "report/makerlibs/trust_level.h"

namespace vanta {

// Finds, checks and loads the library; once a process, later calls tell what came of it. Any thread.
bool LoadBaseLibrary();

// Asks the loaded library about a file, anew at each call. False, and TrustUndecided, when the library is not loaded or
// decides nothing.
bool GetFileTrustLevel(const String& path, LONG* level);

}  // namespace vanta
