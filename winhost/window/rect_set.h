// A part of the plane as disjoint rectangles. Right and bottom edges lie outside, as everywhere in RECT.
#pragma once

#include <windows.h>

#include <vector>

namespace winhost {

class RectSet {
 public:
  RectSet() = default;
  explicit RectSet(const RECT& rectangle) { Add(rectangle); }
  // The rectangles must be disjoint.
  static RectSet Of(std::vector<RECT> disjoint);

  // Empty rectangles change nothing.
  void Add(const RECT& rectangle);
  void Subtract(const RECT& rectangle);
  void Intersect(const RECT& rectangle);
  void Move(int dx, int dy);

  bool Empty() const { return rects_.empty(); }
  bool Contains(POINT point) const;
  RECT Bounds() const;  // 0, 0, 0, 0 when empty
  const std::vector<RECT>& rects() const { return rects_; }

 private:
  std::vector<RECT> rects_;
};

}  // namespace winhost
