// How the markup reader sorts UTF-16 units.
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
  UnitPause = 64,   // what may stand between attributes, or end them
};

namespace markup_detail {

struct UnitClasses {
  consteval UnitClasses() : of() {
    for (const WCHAR c : {' ', '\t', '\n', '\r'}) of[c] = UnitBlank | UnitNameEnd | UnitWordEnd | UnitPause;
    of[WCHAR{'>'}] = UnitNameEnd | UnitWordEnd | UnitPause;
    of[WCHAR{'/'}] = UnitNameEnd | UnitPause;
    of[WCHAR{'='}] = UnitWordEnd;
    of[WCHAR{'<'}] = UnitTagOpen;
    of[WCHAR{'"'}] = UnitDouble;
    of[WCHAR{'\''}] = UnitSingle;
    of[WCHAR{'&'}] = UnitDouble | UnitSingle;
    of[0] = UnitNameEnd | UnitWordEnd | UnitTagOpen | UnitDouble | UnitSingle | UnitPause;
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

// By the low byte alone: every unit of the class passes, and some others do.
constexpr bool MayBeOfClass(WCHAR c, UnitClass wanted) {
  return markup_detail::kUnitClasses.of[static_cast<BYTE>(c)] & wanted;
}

}  // namespace lumo
