// Character references in attribute values.
#pragma once

#include "lumo/core/types.h"

namespace lumo {

// The value with its references replaced, in one pass: the five of markup and those of HTML 4 by name, decimal
// "&#65;" and hexadecimal "&#x41;" ones, beyond U+FFFF as a surrogate pair. What is none of these, "&#0;" and numbers
// above 0x10FFFF stay as written. `decoded` is overwritten.
void DecodeReferences(StringView value, String* decoded);

// The character of an HTML 4 name without "&" and ";"; also "apos". 0 when there is none. Exact comparison.
WCHAR FindHtmlEntity(StringView name);

}  // namespace lumo
