// Where the maker's optional files may lie.
#pragma once

#include "base/text.h"

namespace vanta {

// The first that exists of: beside this executable, in its parent folder, in the maker's suite. When none does, the
// last of these, which is "" on a machine without the suite.
String FindMakerFile(StringView name);

}  // namespace vanta
