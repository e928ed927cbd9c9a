// From design pixels (96 dpi) to device pixels. Pure arithmetic; `percent` is 100 for 96 dpi.
#pragma once

#include "lumo/core/types.h"
#include "lumo/render/rect_math.h"

#include <limits.h>

namespace lumo {

// Sizes that are no lengths. They pass every scaling unchanged, as all values up to 0 do.
inline constexpr int SizeStretch = -1;
inline constexpr int SizeAuto = -2;

// value · percent / 100, rounded to nearest; values up to 0 and everything at 100 percent as they are.
inline int ScaleLength(int value, int percent) {
  return percent == 100 || value <= 0 ? value : MulDiv(value, percent, 100);
}

// For bounds: INT_MAX means "none" and stays, as negative values do.
inline int ScaleLimit(int value, int percent) {
  return percent == 100 || value == INT_MAX ? value : ScaleLength(value, percent);
}

// Left and top as lengths, right and bottom by their distance from them; distances up to 0 are not scaled, and at 100
// percent nothing is.
inline RECT ScaleRect(const RECT& rect, int percent) {
  if (percent == 100) return rect;
  RECT scaled = {ScaleLength(rect.left, percent), ScaleLength(rect.top, percent), 0, 0};
  scaled.right = Sum(scaled.left, ScaleLength(Difference(rect.right, rect.left), percent));
  scaled.bottom = Sum(scaled.top, ScaleLength(Difference(rect.bottom, rect.top), percent));
  return scaled;
}

}  // namespace lumo
