// Paths as the setup uses them: backslashes, at most 259 characters. A function whose answer would be longer gives "".
#pragma once

#include "base/text.h"

namespace vanta {

// `name` below `folder`, with "." and ".." taken out (PathCombineW). "" when the result does not fit.
String JoinPath(StringView folder, StringView name);
// The path without its last component (PathRemoveFileSpecW, which does not know "/"). "" when nothing is left.
String ParentPath(StringView path);
// What follows the last "\" or "/".
String FileNameOf(StringView path);

bool PathExists(const String& path);  // a file or a folder
bool FileExists(const String& path);  // and no folder
bool DirectoryExists(const String& path);

// The running executable's full path, and its folder without a backslash at the end.
String ModulePath();
String ModuleDirectory();

// A special folder (CSIDL_…); "" when the system has none. With `create` a missing one is made.
String GetSpecialFolder(int id, bool create);

// Makes the folder and its missing parents. True when it exists afterwards.
bool MakeDirectories(const String& path);

}  // namespace vanta
