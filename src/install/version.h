// Versions, and what they say about an earlier installation.
#pragma once

#include "base/file_version.h"

namespace vanta {

// The setup's own file version, read once a process. Any thread.
const String& GetOwnVersion();

// Compares part by part as numbers: negative, zero or positive, the difference of the first parts that differ. A part
// without digits is 0, and so is a missing one. Pure.
int CompareVersions(StringView a, StringView b);

// The installed product is newer than this setup. Resolves the install directory where it is empty.
bool isLowerSetup();

// A usable earlier installation is present: the sibling program with the maker's signature in the install directory.
bool IsInstalled();

}  // namespace vanta
