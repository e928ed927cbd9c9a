// From a file's bytes to the reader's text.
#pragma once

#include "lumo/core/markup_log.h"
#include "lumo/core/types.h"

#include <string_view>

namespace lumo {

struct DecodedMarkup {
  String text;
  String encoding;  // "UTF-8", "UTF-16LE", "UTF-16BE", what the document declares, or "ANSI"
};

// A byte-order mark decides; without one, bytes that are UTF-8 throughout are UTF-8; otherwise the document's own
// declaration counts (the XML declaration's "encoding", or a charset that a meta element inside head or html gives),
// and without one the system's code page. What was done is logged: "endian_swap", "nulls_removed", "utf8_detection",
// "converted_to", "conversion_loss", "truncation_error" (half a character at the end). Never fails.
DecodedMarkup DecodeMarkup(std::string_view bytes, MarkupLog* log);

// The encoding that the text declares for itself, "" when it declares none. Looks at its first 64 K units; bytes are
// given widened one to one.
String DeclaredEncoding(const String& text);

// The code page of an encoding's name, without regard to case; CP_ACP for a name that is not known.
UINT CodePageOf(StringView encoding);

}  // namespace lumo
