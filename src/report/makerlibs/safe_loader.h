// Loading libraries so that nothing planted beside the setup is picked up: by full path, dependencies from the system
// folder where this Windows can be told so.
#pragma once

#include <windows.h>

#include "base/text.h"

namespace vanta {

// A library of the system folder, by its plain name ("Shcore.dll"). Null: not there, or `name` is no plain name.
HMODULE LoadSystemLibrary(const WCHAR* name);

// A library by its full path with a drive letter; its dependencies come from the system folder where this Windows
// offers AddDllDirectory. Null, with the last error set, when it is refused or cannot be loaded.
HMODULE LoadLibrarySafely(const String& path);

// Whether `path` begins with a drive letter, ":" and a backslash. Pure.
bool IsFullDrivePath(StringView path);

}  // namespace vanta
