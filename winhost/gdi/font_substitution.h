// Which of the installed fonts stands for a Windows face name. One font with Latin and Chinese glyphs stands for all of
// them, so that text has the same measures on every machine.
#pragma once

#include <string>
#include <string_view>

namespace winhost {

// The family, in UTF-8, that a face name is drawn with; `known` says whether a machine would have a font of this name.
struct Substitute {
  std::string family;
  bool known = false;
};
Substitute SubstituteFor(std::u16string_view face);

}  // namespace winhost
