// Looks at a block of the markup's units at once.
#pragma once

#include "lumo/core/types.h"

namespace lumo {

constexpr size_t kMarkedUnits = 64;

// A bit a unit of the block, the first one lowest. Units whose low byte alone is what is looked for may be marked as
// well, and so may control characters among the words.
struct UnitMarks {
  ULONGLONG words = 0;   // ends of tags' and attributes' names
  ULONGLONG values = 0;  // "<", and what ends a value in double quotes or begins a reference in it
};

// Reads kMarkedUnits units. There is one implementation for processors that compare sixteen bytes at a time and one for
// all others; the build takes one of them.
UnitMarks MarkUnits(const WCHAR* units);

}  // namespace lumo
