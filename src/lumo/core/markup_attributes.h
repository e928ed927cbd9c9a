// The attributes of start tags: where each stands in the text.
#pragma once

#include "lumo/core/markup_finder.h"
#include "lumo/core/types.h"

#include <vector>

namespace lumo {

// Offsets and lengths are UTF-16 units of the document's text; the value is as written, without its quotes.
struct AttributeRecord {
  LONG name;
  LONG name_length;
  LONG value;
  LONG value_length_and_reference;  // twice the length, and 1 when an "&" stands in the value

  size_t ValueLength() const { return static_cast<size_t>(value_length_and_reference) / 2; }
  bool HasReference() const { return value_length_and_reference & 1; }
};
using AttributeRecords = std::vector<AttributeRecord>;

// Reads attributes from `at`, behind a tag's name, to the tag's ">", which it answers; the finder's end, where a NUL
// stands, when there is none. A ">" inside a quoted value does not count. A value that is not quoted runs to the next
// blank or the tag's end; an attribute without "=" has an empty value. Each is added to `records`, where given, with
// its offset from `begin`.
const WCHAR* ReadAttributes(const WCHAR* begin, const WCHAR* at, UnitFinder& finder, AttributeRecords* records);

}  // namespace lumo
