#include "lumo/controls/color_spec.h"

#include "lumo/core/pair_list.h"
#include "lumo/core/value_readers.h"

namespace lumo {

void ColorSpec::Assign(StringView value) {
  *this = ColorSpec();
  text = color = value;
  PairReader pairs(text);
  StringView key, part;
  while (pairs.Next(&key, &part)) {
    if (key == TEXT("color")) {
      color = part;
    } else if (key == TEXT("color1")) {
      color1 = part;
    } else if (key == TEXT("color2")) {
      color2 = part;
    } else if (key == TEXT("mode")) {
      mode = ReadInteger(part);
    } else if (key == TEXT("dest")) {
      dest = ReadRect(part);
    }
  }
}

}  // namespace lumo
