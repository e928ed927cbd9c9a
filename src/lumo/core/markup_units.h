// How the markup reader sorts UTF-16 units, and its searches.
#pragma once

#include "lumo/core/types.h"

namespace lumo {

enum UnitClass : BYTE {
  UnitBlank = 1,    // space, tab, CR, LF
  UnitNameEnd = 2,  // of a tag's name
  UnitWordEnd = 4,  // of an attribute's name
  UnitTagOpen = 8,  // what ends text
  UnitDouble = 16,  // what needs a look in a value in double quotes
  UnitSingle = 32,  // in single quotes
};

namespace markup_detail {

struct UnitClasses {
  consteval UnitClasses() : of() {
    for (const WCHAR c : {' ', '\t', '\n', '\r'}) of[c] = UnitBlank | UnitNameEnd | UnitWordEnd;
    of[WCHAR{'>'}] = UnitNameEnd | UnitWordEnd;
    of[WCHAR{'/'}] = UnitNameEnd;
    of[WCHAR{'='}] = UnitWordEnd;
    of[WCHAR{'<'}] = UnitTagOpen;
    of[WCHAR{'"'}] = UnitDouble;
    of[WCHAR{'\''}] = UnitSingle;
    of[WCHAR{'&'}] = UnitDouble | UnitSingle;
    of[0] = UnitNameEnd | UnitWordEnd | UnitTagOpen | UnitDouble | UnitSingle;
  }
  BYTE of[256];
};
inline constexpr UnitClasses kUnitClasses;

}  // namespace markup_detail

constexpr bool IsOfClass(WCHAR c, UnitClass wanted) { return c < 256 && (markup_detail::kUnitClasses.of[c] & wanted); }
constexpr bool IsMarkupBlank(WCHAR c) { return IsOfClass(c, UnitBlank); }
constexpr bool EndsMarkupName(WCHAR c) { return IsOfClass(c, UnitNameEnd); }
// From the letter a upward everything may begin a name, all that is not ASCII with it.
constexpr bool BeginsMarkupName(WCHAR c) { return c >= 'a' || (c >= 'A' && c <= 'Z') || c == '_' || c == ':'; }

// The first unit from `at` on that is of the class, or `end`, at which a NUL must stand: every class that is searched
// for has the NUL, so that the way there needs one look a unit.
template <UnitClass wanted>
[[gnu::always_inline]] inline const WCHAR* FindClass(const WCHAR* at, const WCHAR* end) {
  // The low byte alone; what it lets through wrongly is looked at again.
  const auto passes = [](WCHAR c) { return markup_detail::kUnitClasses.of[static_cast<BYTE>(c)] & wanted; };
  for (;; ++at) {
    while (!passes(*at)) {
      if (passes(*++at)) break;
      if (passes(*++at)) break;
      if (passes(*++at)) break;
      if (passes(*++at)) break;
      if (passes(*++at)) break;
      if (passes(*++at)) break;
      if (passes(*++at)) break;
      ++at;
    }
    if (*at < 256 && (*at != 0 || at == end)) return at;
  }
}

}  // namespace lumo
