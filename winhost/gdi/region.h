// A set of pixels as rectangles, in device coordinates. A value: copying copies.
#pragma once

#include <cairo.h>
#include <windows.h>

#include <span>
#include <vector>

#include "winhost/gdi/object_table.h"

namespace winhost {

class Region {
 public:
  Region() : region_(cairo_region_create()) {}
  // Corners may come in any order.
  explicit Region(const RECT& rect);
  explicit Region(std::span<const RECT> rects);
  Region(const Region& other) : region_(cairo_region_copy(other.region_)) {}
  Region(Region&& other) noexcept : Region() { std::swap(region_, other.region_); }
  Region& operator=(Region other) noexcept {
    std::swap(region_, other.region_);
    return *this;
  }
  ~Region() { cairo_region_destroy(region_); }

  // `mode` is one of RGN_AND … RGN_COPY; false, and nothing changes, for another one.
  bool Combine(const Region& other, int mode);
  void Offset(int dx, int dy) { cairo_region_translate(region_, dx, dy); }
  bool Contains(int x, int y) const { return cairo_region_contains_point(region_, x, y) != 0; }
  bool Empty() const { return cairo_region_is_empty(region_) != 0; }
  RECT Box() const;
  int Count() const { return cairo_region_num_rectangles(region_); }
  RECT At(int index) const;
  std::vector<RECT> Rects() const;
  // NULLREGION, SIMPLEREGION or COMPLEXREGION.
  int Complexity() const;
  bool operator==(const Region& other) const { return cairo_region_equal(region_, other.region_) != 0; }

 private:
  cairo_region_t* region_;
};

// A rectangle with round corners, each a quarter of an ellipse of this width and height.
Region RoundRectRegion(const RECT& rect, int width, int height);

struct RegionObject final : GraphicsObject {
  static constexpr ObjectKind kKind = ObjectKind::Region;
  explicit RegionObject(Region value) : GraphicsObject(kKind), region(std::move(value)) {}
  Region region;
};

}  // namespace winhost
