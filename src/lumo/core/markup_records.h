// What the markup reader knows of each element. Offsets and lengths are UTF-16 units of the document's text.
#pragma once

#include "lumo/core/types.h"

#include <vector>

namespace lumo {

enum ElementFlag : DWORD {
  ElementIllFormed = 1,  // ended by something else than its end tag; on the document: something is wrong with it
  ElementEmpty = 2,      // the start tag ends with "/>"
};

struct ElementRecord {
  LONG start = 0;         // the "<" of the start tag
  LONG name_length = 0;   // of the name behind it
  LONG tag_length = 0;    // of the start tag, brackets included
  LONG total_length = 0;  // up to the end of the end tag
  DWORD flags = 0;
  LONG parent = 0;  // indices of other records; 0 is none, or the document as parent
  LONG first_child = 0;
  LONG next = 0;
  LONG previous = 0;
  LONG attributes = 0;  // the index of its first attribute; they end where those of the next record begin
};

// In document order. Record 0 is the document itself; its first child is the root element.
using MarkupRecords = std::vector<ElementRecord>;

inline StringView NameOf(StringView text, const ElementRecord& element) {
  return {text.data() + element.start + 1, static_cast<size_t>(element.name_length)};
}

}  // namespace lumo
