// The version that a program's version resource states.
#pragma once

#include "base/text.h"

namespace vanta {

// "a.b.c.d" of the fixed file version; "0.0.0.0" when the file has no readable version resource, "" when the path is
// empty or names no file.
String GetFileVersionString(const String& path);

}  // namespace vanta
