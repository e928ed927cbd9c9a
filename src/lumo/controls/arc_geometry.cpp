#include "lumo/controls/arc_geometry.h"

#include "lumo/controls/layout_math.h"

namespace lumo {

ArcGeometry ArcIn(const RECT& position, LONG inset) {
  const LONGLONG width = WideWidth(position), height = WideHeight(position);
  const LONGLONG size = width < height ? width : height;
  const LONGLONG x = position.left + width / 2, y = position.top + height / 2;
  ArcGeometry geometry;
  geometry.centre = {ToLong(x), ToLong(y)};
  geometry.square = MakeRect(x - size / 2, y - size / 2, x - size / 2 + size, y - size / 2 + size);
  const RECT& square = geometry.square;
  // One pixel to the right and down, two pixels smaller.
  geometry.arc = MakeRect(LONGLONG{square.left} + inset + 1, LONGLONG{square.top} + inset + 1,
                          LONGLONG{square.right} - inset - 1, LONGLONG{square.bottom} - inset - 1);
  return geometry;
}

float SweepOf(double fraction, bool clockwise) {
  const float sweep = static_cast<float>(fraction * 360.0);
  return clockwise ? sweep : -sweep;
}

}  // namespace lumo
