// The outline of a rectangle with rounded corners.
#pragma once

#include "lumo/render/gdip.h"

namespace lumo {

// What the outline is made of. Radii in the order top-left, top-right, bottom-right, bottom-left.
struct RoundedShape {
  enum class Kind { Rectangle, Ellipse, Corners } kind;
  float x, y, width, height;
  float radii[4];
};

// Inset by half the pen's width and half a pixel, so that a pen of whole width on whole coordinates covers whole
// pixels. Radii are limited to half of the width and of the height. Pure.
RoundedShape ShapeOf(const RECT& rect, const RECT& round, int pen_width);

constexpr bool HasRound(const RECT& round) { return round.left || round.top || round.right || round.bottom; }

// Null when GDI+ refuses or the rectangle leaves no room for the pen.
UniqueGpPath MakeRoundedPath(const RECT& rect, const RECT& round, int pen_width);

}  // namespace lumo
