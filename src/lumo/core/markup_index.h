// Builds the index of a document: its elements and their attributes.
#pragma once

#include "lumo/core/markup_attributes.h"
#include "lumo/core/markup_log.h"
#include "lumo/core/markup_records.h"
#include "lumo/core/types.h"

namespace lumo {

struct MarkupIndex {
  MarkupRecords elements;
  AttributeRecords attributes;
};

// Fills `index` anew from a text behind which a NUL stands, logs what is wrong, and says whether the text is
// well-formed. An empty text is not, and logs nothing. Time grows with the text's length alone, however its tags are
// mixed up.
bool IndexMarkup(StringView text, MarkupIndex* index, MarkupLog* log);

}  // namespace lumo
