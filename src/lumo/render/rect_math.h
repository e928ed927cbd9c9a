// Arithmetic on coordinates that layouts may have made huge: sums stop at the ends of LONG instead of wrapping.
#pragma once

#include <windows.h>

#include <limits.h>

#include <algorithm>

namespace lumo {

inline LONG Saturate(LONGLONG value) { return static_cast<LONG>(std::clamp<LONGLONG>(value, LONG_MIN, LONG_MAX)); }
inline LONG Sum(LONG a, LONG b) { return Saturate(LONGLONG{a} + b); }
inline LONG Difference(LONG a, LONG b) { return Saturate(LONGLONG{a} - b); }

inline int WidthOf(const RECT& rect) { return Difference(rect.right, rect.left); }
inline int HeightOf(const RECT& rect) { return Difference(rect.bottom, rect.top); }

inline RECT Moved(const RECT& rect, LONG dx, LONG dy) {
  return {Sum(rect.left, dx), Sum(rect.top, dy), Sum(rect.right, dx), Sum(rect.bottom, dy)};
}

inline RECT CommonPart(const RECT& a, const RECT& b) {
  return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right), std::min(a.bottom, b.bottom)};
}
inline bool IsEmpty(const RECT& rect) { return rect.left >= rect.right || rect.top >= rect.bottom; }
inline bool Meets(const RECT& a, const RECT& b) { return !IsEmpty(CommonPart(a, b)); }

}  // namespace lumo
