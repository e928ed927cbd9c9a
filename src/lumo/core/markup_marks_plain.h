// What MarkUnits does, for processors without registers that hold many units.
#pragma once

#include "lumo/core/markup_marks.h"
#include "lumo/core/markup_units.h"

namespace lumo {

inline UnitMarks MarkUnitsPlainly(const WCHAR* units) {
  constexpr size_t kHalf = 32;  // what their registers hold of the marks
  struct {
    DWORD words, values;
  } halves[kMarkedUnits / kHalf] = {};
  for (size_t i = kMarkedUnits; i-- > 0;) {
    const bool word = MayBeOfClass(units[i], UnitWordEnd) || MayBeOfClass(units[i], UnitNameEnd);
    const bool value = MayBeOfClass(units[i], UnitDouble) || MayBeOfClass(units[i], UnitTagOpen);
    auto& [words, values] = halves[i / kHalf];
    words = words << 1 | DWORD{word};
    values = values << 1 | DWORD{value};
  }
  return {halves[0].words | ULONGLONG{halves[1].words} << kHalf,
          halves[0].values | ULONGLONG{halves[1].values} << kHalf};
}

}  // namespace lumo
