// Where the parts of a circular progress lie. Pure.
#pragma once

#include <windows.h>

namespace lumo {

struct ArcGeometry {
  RECT square;  // the largest square in the middle of the control
  RECT arc;     // what the middle of the pen runs along
  POINT centre;
};

// `inset` is what lies between the square's edge and the arc: half the pen, or half the indicator's width.
ArcGeometry ArcIn(const RECT& position, LONG inset);

// Degrees from the top, clockwise; negative when counter-clockwise.
float SweepOf(double fraction, bool clockwise);

}  // namespace lumo
