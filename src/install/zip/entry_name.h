// Entry names as paths: how a stored name is reported, and which names are fit to become files.
#pragma once

#include "base/text.h"

namespace vanta {

// What remains of a name when drive prefixes, leading separators, and all up to and including the last parent reference
// are dropped; a last component ".." is dropped too. A part of `name`; may be empty. Separators stay as they are.
StringView SanitiseName(StringView name);

// Whether Windows would make, of each component of a sanitised name, a file or folder of exactly that name: no ":" or
// control character, no device name (CON, "nul.txt" …), no trailing dot or blank. "." and empty components are passed
// over.
bool IsExtractableName(StringView name);

}  // namespace vanta
