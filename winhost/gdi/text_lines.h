// Breaking a paragraph into lines and cutting lines that are too wide.
#pragma once

#include <string_view>

#include "winhost/gdi/text_layout.h"

namespace winhost {

// The lines of `text` (no line ends in it); `offset` is where it begins in the whole text. At least one line.
// `most` lines at most, 0: all; `more` says that text follows, so that a last line which is cut gets its ellipsis.
std::vector<TextLine> BreakParagraph(const TextRequest& request, std::u16string_view text, std::size_t offset, int most,
                                     bool more);

}  // namespace winhost
