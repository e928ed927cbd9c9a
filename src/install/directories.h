// Where the product goes, and whether a folder that the user picked will do.
#pragma once

#include "base/text.h"

#include <windows.h>

namespace vanta {

// Sets the install directory: an earlier installation's registered folder that still exists, else the product's folder
// below the program files.
void ResolveInstallDirectory();
// The install directory, resolved first when it is empty.
String GetInstallDirectory();
// Replaces it; null, and a path of more than 259 characters, are ignored.
void SetInstallDirectory(const WCHAR* path);

// Lets the user pick a folder in the system's own dialog, modal over `owner`, which opens in the special folder `id`
// (CSIDL_…) where the system's dialog can. "" when the user cancels, and when the dialog cannot be shown or what was
// picked is no folder of the file system. Runs a message loop; the thread must be in a single-threaded apartment.
String ChooseFolder(HWND owner, int id);

enum class DirectoryCheck { Accepted, Ignored, Invalid, NotWritable, NoSpace };

// Judges a folder that the user picked; "" means that the choice was cancelled and is ignored. When accepted,
// `directory` is the install directory it gives; otherwise it is left alone.
DirectoryCheck CheckChosenDirectory(const String& path, String* directory);
// The string-table key of the tip to show; "" for Accepted and Ignored.
const WCHAR* DirectoryTip(DirectoryCheck check);

// Files can be made in the folder; a probe file is made and removed.
bool IsDirectoryWritable(const String& path);

}  // namespace vanta
