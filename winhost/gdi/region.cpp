#include "winhost/gdi/region.h"

#include <algorithm>
#include <cmath>

namespace winhost {
namespace {

// Coordinates are kept so small that widths and sums stay within an int.
constexpr LONG kFar = 0x1FFFFFFF;

// Rows of rectangles that a rounded corner may cost.
constexpr int kMostCurved = 0xFFFF;

LONG Near(LONG value) { return std::clamp(value, -kFar, kFar); }

cairo_rectangle_int_t ToCairo(const RECT& rect) {
  const LONG left = Near(std::min(rect.left, rect.right));
  const LONG top = Near(std::min(rect.top, rect.bottom));
  const LONG right = Near(std::max(rect.left, rect.right));
  const LONG bottom = Near(std::max(rect.top, rect.bottom));
  return {left, top, right - left, bottom - top};
}

RECT FromCairo(const cairo_rectangle_int_t& rect) {
  return {rect.x, rect.y, rect.x + rect.width, rect.y + rect.height};
}

}  // namespace

Region::Region(const RECT& rect) {
  const cairo_rectangle_int_t value = ToCairo(rect);
  region_ = cairo_region_create_rectangle(&value);
}

Region::Region(std::span<const RECT> rects) {
  std::vector<cairo_rectangle_int_t> values;
  std::ranges::transform(rects, std::back_inserter(values), ToCairo);
  region_ = cairo_region_create_rectangles(values.data(), static_cast<int>(values.size()));
}

bool Region::Combine(const Region& other, int mode) {
  switch (mode) {
    case RGN_AND:
      cairo_region_intersect(region_, other.region_);
      return true;
    case RGN_OR:
      cairo_region_union(region_, other.region_);
      return true;
    case RGN_XOR:
      cairo_region_xor(region_, other.region_);
      return true;
    case RGN_DIFF:
      cairo_region_subtract(region_, other.region_);
      return true;
    case RGN_COPY:
      *this = other;
      return true;
    default:
      return false;
  }
}

RECT Region::Box() const {
  cairo_rectangle_int_t box;
  cairo_region_get_extents(region_, &box);
  return Empty() ? RECT{} : FromCairo(box);
}

RECT Region::At(int index) const {
  cairo_rectangle_int_t rect;
  cairo_region_get_rectangle(region_, index, &rect);
  return FromCairo(rect);
}

std::vector<RECT> Region::Rects() const {
  std::vector<RECT> rects;
  for (int i = 0; i < Count(); ++i) rects.push_back(At(i));
  return rects;
}

int Region::Complexity() const {
  if (Empty()) return NULLREGION;
  return Count() == 1 ? SIMPLEREGION : COMPLEXREGION;
}

Region RoundRectRegion(const RECT& rect, int width, int height) {
  const Region whole(rect);
  const RECT box = whole.Box();
  const int wide = std::min({std::abs(width), kMostCurved, static_cast<int>(box.right - box.left)});
  const int high = std::min({std::abs(height), kMostCurved, static_cast<int>(box.bottom - box.top)});
  if (wide < 2 || high < 2) return whole;
  std::vector<RECT> rows;
  const double rx = wide / 2.0, ry = high / 2.0;
  const int curved = high / 2;
  for (int row = 0; row < curved; ++row) {
    const double up = (ry - row - 0.5) / ry;  // at the row's middle, from the ellipse's centre
    const int inset = static_cast<int>(std::lround(rx - rx * std::sqrt(std::max(0.0, 1 - up * up))));
    rows.push_back({box.left + inset, box.top + row, box.right - inset, box.top + row + 1});
    rows.push_back({box.left + inset, box.bottom - row - 1, box.right - inset, box.bottom - row});
  }
  rows.push_back({box.left, box.top + curved, box.right, box.bottom - curved});
  return Region(std::span<const RECT>(rows));
}

}  // namespace winhost
