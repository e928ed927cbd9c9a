// Arithmetic on RECT. A rectangle is empty when its right edge is not right of its left one, or its bottom not below.
#include <windows.h>

#include <algorithm>

BOOL SetRect(LPRECT rectangle, int left, int top, int right, int bottom) {
  if (!rectangle) return FALSE;
  *rectangle = {left, top, right, bottom};
  return TRUE;
}

BOOL SetRectEmpty(LPRECT rectangle) { return SetRect(rectangle, 0, 0, 0, 0); }

BOOL CopyRect(LPRECT to, const RECT* from) {
  if (!to || !from) return FALSE;
  *to = *from;
  return TRUE;
}

BOOL InflateRect(LPRECT rectangle, int dx, int dy) {
  if (!rectangle) return FALSE;
  rectangle->left -= dx;
  rectangle->right += dx;
  rectangle->top -= dy;
  rectangle->bottom += dy;
  return TRUE;
}

BOOL OffsetRect(LPRECT rectangle, int dx, int dy) {
  if (!rectangle) return FALSE;
  rectangle->left += dx;
  rectangle->right += dx;
  rectangle->top += dy;
  rectangle->bottom += dy;
  return TRUE;
}

BOOL IsRectEmpty(const RECT* rectangle) {
  return !rectangle || rectangle->right <= rectangle->left || rectangle->bottom <= rectangle->top;
}

BOOL IntersectRect(LPRECT common, const RECT* a, const RECT* b) {
  if (!common || !a || !b) return FALSE;
  const RECT result{std::max(a->left, b->left), std::max(a->top, b->top), std::min(a->right, b->right),
                    std::min(a->bottom, b->bottom)};
  if (IsRectEmpty(a) || IsRectEmpty(b) || IsRectEmpty(&result)) return SetRectEmpty(common) && FALSE;
  *common = result;
  return TRUE;
}

BOOL UnionRect(LPRECT both, const RECT* a, const RECT* b) {
  if (!both || !a || !b) return FALSE;
  if (IsRectEmpty(a) && IsRectEmpty(b)) return SetRectEmpty(both) && FALSE;
  if (IsRectEmpty(a)) return CopyRect(both, b);
  if (IsRectEmpty(b)) return CopyRect(both, a);
  *both = {std::min(a->left, b->left), std::min(a->top, b->top), std::max(a->right, b->right),
           std::max(a->bottom, b->bottom)};
  return TRUE;
}

// Cuts only what leaves a rectangle: a `taken` that spans the whole width or height.
BOOL SubtractRect(LPRECT rest, const RECT* from, const RECT* taken) {
  if (!rest || !from || !taken) return FALSE;
  RECT result = *from, common;
  if (IntersectRect(&common, from, taken)) {
    if (EqualRect(&common, from)) return SetRectEmpty(rest) && FALSE;
    if (common.top == from->top && common.bottom == from->bottom) {
      if (common.left == from->left) {
        result.left = common.right;
      } else if (common.right == from->right) {
        result.right = common.left;
      }
    } else if (common.left == from->left && common.right == from->right) {
      if (common.top == from->top) {
        result.top = common.bottom;
      } else if (common.bottom == from->bottom) {
        result.bottom = common.top;
      }
    }
  }
  *rest = result;
  return !IsRectEmpty(rest);
}

BOOL EqualRect(const RECT* a, const RECT* b) {
  return a && b && a->left == b->left && a->top == b->top && a->right == b->right && a->bottom == b->bottom;
}

BOOL PtInRect(const RECT* rectangle, POINT point) {
  return rectangle && point.x >= rectangle->left && point.x < rectangle->right && point.y >= rectangle->top &&
         point.y < rectangle->bottom;
}
