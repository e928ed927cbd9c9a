// What the text engine keeps for a thread: Pango's font map and its two contexts.
#pragma once

#include "winhost/gdi/text_layout.h"

namespace winhost {

PangoContext* TextContext(GlyphPlaces places);
// The description of a font in Pango's terms; the caller frees it.
PangoFontDescription* DescribeFont(const TextFont& font);

}  // namespace winhost
