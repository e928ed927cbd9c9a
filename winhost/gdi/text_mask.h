// A block of text as coverage of pixels, kept with the block: the same text at the same fraction of a pixel is drawn
// many times.
#pragma once

#include <vector>

#include "winhost/gdi/canvas.h"

namespace winhost {

struct TextBlock;

enum class TextAlign { Near, Center, Far };

struct TextPlace {
  TextAlign align = TextAlign::Near;
  double box = 0;  // the width to align in
  double x = 0;    // where the block's left and top are, in pixels
  double y = 0;
  bool whole_lines = false;  // every line's left at a whole pixel, as GDI has it
  bool blank_ends = false;   // spaces at a line's end count as part of it
  bool antialias = true;
};

struct TextMask {
  TextPlace place;        // x and y: fractions
  CairoSurface coverage;  // CAIRO_FORMAT_A8
  int left = 0;           // of the coverage, from the block's place without its fractions
  int top = 0;
};

struct TextMasks {
  std::vector<std::shared_ptr<const TextMask>> kept;
};

// Null when there is nothing to see, or when the text is too large to be kept like this.
std::shared_ptr<const TextMask> MaskOf(const TextBlock& block, const TextPlace& place);
// The outlines of the text, appended to the context's path; for text that is turned or scaled.
void AddTextPath(cairo_t* context, const TextBlock& block, const TextPlace& place);
// The left edge of a line, from the block's place.
double LineLeft(const TextBlock& block, std::size_t line, const TextPlace& place);

}  // namespace winhost
