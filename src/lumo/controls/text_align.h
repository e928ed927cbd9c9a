// How the words of an "align" attribute change the style of a text (DT_ flags). Pure.
#pragma once

#include "lumo/core/types.h"

#include <vector>

namespace lumo {

inline constexpr UINT kLabelStyle = DT_SINGLELINE | DT_NOCLIP | DT_END_ELLIPSIS;

// The words are looked for anywhere in `words`, in the order left, hcenter, right, top, vcenter, bottom.
UINT ApplyAlignWords(UINT style, StringView words);
std::vector<StringView> AlignWords();

// What measuring and painting use: single line decides DT_SINGLELINE, whatever the style says.
constexpr UINT WithSingleLine(UINT style, bool single_line) {
  return single_line ? style | DT_SINGLELINE : style & ~UINT{DT_SINGLELINE};
}

}  // namespace lumo
