// Finds a layout or the global file: in the skin package, on disk, or in the text itself.
#pragma once

#include "lumo/core/types.h"

namespace lumo {

class MarkupDocument;

// LumoOk; LumoMissingArgument when `source` is null; LumoParseFailure when the text cannot be read or is not
// well-formed. A source that begins with "<" is the markup itself. Any other is a path below the theme folder, in the
// skin package or, when it is not there, on disk (an absolute path is read from disk as it stands). Text from the
// package is UTF-8 and ends at its first NUL.
int LoadMarkup(const WCHAR* source, MarkupDocument* document);

}  // namespace lumo
