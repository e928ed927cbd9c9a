// Finds the units that matter to the markup reader.
#pragma once

#include "lumo/core/markup_marks.h"
#include "lumo/core/markup_units.h"

#include <bit>

namespace lumo {

// Searches one text. Names and values are of all lengths, so that a branch a unit is one that no processor foretells;
// this one looks at a block of units without any and keeps what it saw, which the next searches use too.
class UnitFinder {
 public:
  // Searches begin at `begin` or later. A NUL must stand at `end`; the text must outlive the finder.
  UnitFinder(const WCHAR* begin, const WCHAR* end) : end_(end) { Take(begin); }

  const WCHAR* End() const { return end_; }

  // The first unit from `at` on that may be of the class; none of it stands before. The caller looks whether it is what
  // he wants, and asks Find when not. `End()` when there is none.
  template <UnitClass wanted>
  [[gnu::always_inline]] const WCHAR* FindNear(const WCHAR* at) {
    static_assert(wanted != UnitSingle && wanted != UnitBlank);
    for (;;) {
      const auto passed = static_cast<size_t>(at - block_);
      if (passed < kMarkedUnits) [[likely]] {
        const ULONGLONG marks = (wanted & (UnitDouble | UnitTagOpen) ? marks_.values : marks_.words) >> passed;
        if (marks) [[likely]]
          return at + std::countr_zero(marks);
        at = block_ + kMarkedUnits;
      }
      if (at >= end_) return end_;
      TakeBlockOf(at);
    }
  }

  // The first unit from `at` on that is of the class; `End()` when there is none.
  template <UnitClass wanted>
  const WCHAR* Find(const WCHAR* at) {
    for (;; ++at) {
      if constexpr (wanted == UnitSingle) {
        while (!IsOfClass(*at, wanted)) ++at;
      } else {
        at = FindNear<wanted>(at);
      }
      if (at == end_ || (*at && IsOfClass(*at, wanted))) return at;
    }
  }

 private:
  void TakeBlockOf(const WCHAR* at);
  void Take(const WCHAR* block);

  const WCHAR* end_;
  const WCHAR* block_;
  UnitMarks marks_;  // of the block; the text's end is marked too
};

}  // namespace lumo
