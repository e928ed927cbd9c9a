// Arithmetic of layouts, free of windows and controls. Sums are made in 64 bits and stop at the ends of LONG, so that
// no size that a skin can write overflows.
#pragma once

#include "lumo/render/rect_math.h"

#include <limits.h>

namespace lumo {

constexpr LONG ToLong(LONGLONG value) {
  return value > INT_MAX ? INT_MAX : value < INT_MIN ? INT_MIN : static_cast<LONG>(value);
}
// In 64 bits, where turned and huge rectangles keep their sign.
constexpr LONGLONG WideWidth(const RECT& rect) { return LONGLONG{rect.right} - rect.left; }
constexpr LONGLONG WideHeight(const RECT& rect) { return LONGLONG{rect.bottom} - rect.top; }
// 1 or 0: numbers, so that four answers are joined without a branch.
constexpr int FitsLong(LONGLONG value) { return value == static_cast<LONG>(value); }
constexpr RECT MakeRect(LONGLONG left, LONGLONG top, LONGLONG right, LONGLONG bottom) {
  if (FitsLong(left) & FitsLong(top) & FitsLong(right) & FitsLong(bottom)) [[likely]] {
    return {static_cast<LONG>(left), static_cast<LONG>(top), static_cast<LONG>(right), static_cast<LONG>(bottom)};
  }
  return {ToLong(left), ToLong(top), ToLong(right), ToLong(bottom)};
}
constexpr RECT Shrink(const RECT& rect, const RECT& by) {
  return MakeRect(LONGLONG{rect.left} + by.left, LONGLONG{rect.top} + by.top, LONGLONG{rect.right} - by.right,
                  LONGLONG{rect.bottom} - by.bottom);
}
constexpr RECT Shift(const RECT& rect, LONGLONG dx, LONGLONG dy) {
  return MakeRect(rect.left + dx, rect.top + dy, rect.right + dx, rect.bottom + dy);
}
// The smallest rectangle around both.
constexpr RECT Join(const RECT& a, const RECT& b) {
  return {a.left < b.left ? a.left : b.left, a.top < b.top ? a.top : b.top, a.right > b.right ? a.right : b.right,
          a.bottom > b.bottom ? a.bottom : b.bottom};
}
constexpr bool IsZero(const RECT& rect) { return !rect.left && !rect.top && !rect.right && !rect.bottom; }
constexpr bool SameRect(const RECT& a, const RECT& b) {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

// Raised to `min` where that is a bound, then lowered to `max` where that is one: not negative, and not INT_MAX for
// min.
constexpr LONGLONG ClampLength(LONGLONG length, LONG min, LONG max) {
  if (min >= 0 && min < INT_MAX && length < min) length = min;
  if (max >= 0 && length > max) length = max;
  return length;
}

// How stretch children share what the others leave: each gets `each`, the first `extra` of them one pixel more.
struct StretchShares {
  LONGLONG each = 0;
  LONGLONG extra = 0;
};
constexpr StretchShares ShareOut(LONGLONG room, LONGLONG fixed, LONGLONG children) {
  StretchShares shares;
  if (children <= 0) return shares;
  shares.each = (room - fixed) / children;
  if (shares.each < 0) shares.each = 0;
  shares.extra = room - shares.each * children - fixed;
  return shares;
}

// Where along one axis a length lies between `low` and `high`: 0 at the low end, 1 in the middle, 2 at the high end.
constexpr LONGLONG AlignBetween(int align, LONGLONG low, LONGLONG high, LONGLONG length) {
  if (align == 2) return high - length;
  return align == 1 ? low + (high - length - low) / 2 : low;
}

}  // namespace lumo
