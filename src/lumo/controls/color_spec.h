// A colour value of a control: the name of a global colour, or a list of key='value' pairs with the ends of a gradient.
#pragma once

#include "lumo/core/types.h"
#include "lumo/core/value_kind.h"

namespace lumo {

struct ColorSpec {
  String text;    // as the skin wrote it
  String color;   // the "color" pair; the whole text without one
  String color1;  // both ends set make a gradient
  String color2;
  RECT dest = {};  // design pixels inside the control; all zero = everywhere
  int mode = 0;    // 0 horizontal, 1 vertical, 2 and 3 diagonal

  // Forgets everything and reads `value`. Reading stops at the first malformed pair and keeps what was read.
  void Assign(StringView value);
  // The keys of the pairs.
  static void ListKeys(AttributeInfos* infos);

  bool IsEmpty() const { return text.empty(); }
  bool IsGradient() const { return !color1.empty() && !color2.empty(); }
  bool HasDest() const { return dest.left != 0 || dest.top != 0 || dest.right != 0 || dest.bottom != 0; }
};

}  // namespace lumo
