// Paths inside the skin package.
#pragma once

#include "base/text.h"

#include <optional>

namespace vanta {

// A path as the package's entry names are written: "/" between segments, no "." and ".." segments before the last, no
// empty ones. None when it climbs above its start. Pure.
std::optional<String> NormaliseSkinPath(StringView path);

// `folder` with a backslash at its end unless it has a separator there.
String WithSeparator(StringView folder);

}  // namespace vanta
