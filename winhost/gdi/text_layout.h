// The text engine: breaks text into lines, shapes and trims them. Made once and kept for the next time that the same
// text is drawn in the same way. Belongs to the calling thread, as everything that Pango makes.
#pragma once

#include <pango/pangocairo.h>

#include <compare>
#include <memory>
#include <string>
#include <vector>

#include "winhost/gdi/text_font.h"
#include "winhost/gdi/text_mask.h"

namespace winhost {

enum class GlyphPlaces { WholePixels, Fractions };  // GDI's and GDI+'s
enum class Wrap { None, Words, WordsThenCharacters };
enum class Trim { None, Characters, Ellipsis, MiddleEllipsis };

struct TextRequest {
  std::u16string text;  // control characters other than line ends and tabs are not shown
  TextFont font;
  GlyphPlaces places = GlyphPlaces::Fractions;
  Wrap wrap = Wrap::None;
  Trim trim = Trim::None;
  double width = -1;        // for wrapping and trimming; negative: no limit
  int most_lines = 0;       // 0: any number, -1: none; with an ellipsis the last one is cut when text is left
  bool one_line = false;    // line ends count as spaces
  bool three_dots = false;  // … or U+2026 as the ellipsis
  bool tab_stops = false;   // every 8 average characters; otherwise a tab is a space
  int underlined = -1;      // place of one character to underline
  auto operator<=>(const TextRequest&) const = default;
};

struct GObjectReleased {
  void operator()(void* object) const { g_object_unref(object); }
};
using PangoLayoutOwner = std::unique_ptr<PangoLayout, GObjectReleased>;

struct TextLine {
  std::shared_ptr<PangoLayout> layout;
  PangoLayoutLine* line = nullptr;  // lives as long as the layout
  double width = 0;                 // without trailing spaces
  double whole_width = 0;
  std::size_t end = 0;  // of the text up to the line's end, in UTF-16 units
};

// Lines below each other, the first one's top at 0.
struct TextBlock {
  std::vector<TextLine> lines;
  TextFont font;
  double ascent = 0;   // from a line's top to its baseline
  double spacing = 0;  // from line to line
  double width = 0;    // of the widest line
  double whole_width = 0;
  double Height() const { return spacing * static_cast<double>(lines.size()); }
  mutable TextMasks masks;
};

std::shared_ptr<const TextBlock> LayOutText(const TextRequest& request);

}  // namespace winhost
