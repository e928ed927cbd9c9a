#include "lumo/render/rounded_path.h"

#include <algorithm>

namespace lumo {
namespace {

using Kind = RoundedShape::Kind;

// A quarter of a circle at one corner; a radius of 0 leaves the corner sharp.
void AddCorner(Gdiplus::GpPath* path, float x, float y, float radius, float start) {
  if (radius > 0) Record(gdip::GdipAddPathArc(path, x, y, 2 * radius, 2 * radius, start, 90));
}

void AddLine(Gdiplus::GpPath* path, float x1, float y1, float x2, float y2) {
  if (x1 != x2 || y1 != y2) Record(gdip::GdipAddPathLine(path, x1, y1, x2, y2));
}

// Clockwise from the top edge.
void AddCorners(Gdiplus::GpPath* path, const RoundedShape& s) {
  const float right = s.x + s.width, bottom = s.y + s.height;
  const float top_left = s.radii[0], top_right = s.radii[1], bottom_right = s.radii[2], bottom_left = s.radii[3];
  AddLine(path, s.x + top_left, s.y, right - top_right, s.y);
  AddCorner(path, right - 2 * top_right, s.y, top_right, 270);
  AddLine(path, right, s.y + top_right, right, bottom - bottom_right);
  AddCorner(path, right - 2 * bottom_right, bottom - 2 * bottom_right, bottom_right, 0);
  AddLine(path, right - bottom_right, bottom, s.x + bottom_left, bottom);
  AddCorner(path, s.x, bottom - 2 * bottom_left, bottom_left, 90);
  AddLine(path, s.x, bottom - bottom_left, s.x, s.y + top_left);
  AddCorner(path, s.x, s.y, top_left, 180);
  Record(gdip::GdipClosePathFigure(path));
}

}  // namespace

RoundedShape ShapeOf(const RECT& rect, const RECT& round, int pen_width) {
  const auto pen = static_cast<float>(pen_width);
  const float width = static_cast<float>(rect.right) - static_cast<float>(rect.left);
  const float height = static_cast<float>(rect.bottom) - static_cast<float>(rect.top);
  RoundedShape shape = {Kind::Corners,
                        static_cast<float>(rect.left) + pen / 2 + 0.5F,
                        static_cast<float>(rect.top) + pen / 2 + 0.5F,
                        width - pen - 1,
                        height - pen - 1,
                        {}};
  const LONG radii[4] = {round.left, round.top, round.right, round.bottom};
  const bool equal = std::all_of(radii, radii + 4, [&](LONG r) { return r == radii[0]; });
  if (equal && radii[0] == 0) shape.kind = Kind::Rectangle;
  if (equal && radii[0] != 0 && width == height && width == 2 * static_cast<float>(radii[0])) {
    shape.kind = Kind::Ellipse;
  }
  for (int i = 0; i < 4; ++i) {
    const float limit = std::min(shape.width, shape.height) / 2;
    shape.radii[i] = std::max(0.0F, std::min(static_cast<float>(radii[i]), limit));
  }
  return shape;
}

UniqueGpPath MakeRoundedPath(const RECT& rect, const RECT& round, int pen_width) {
  const RoundedShape shape = ShapeOf(rect, round, pen_width);
  UniqueGpPath path;
  if (shape.width <= 0 || shape.height <= 0) return path;
  Record(gdip::GdipCreatePath(Gdiplus::FillModeAlternate, path.Put()));
  if (!path) return path;
  switch (shape.kind) {
    case Kind::Rectangle:
      Record(gdip::GdipAddPathRectangle(path.Get(), shape.x, shape.y, shape.width, shape.height));
      break;
    case Kind::Ellipse:
      Record(gdip::GdipAddPathEllipse(path.Get(), shape.x, shape.y, shape.width, shape.height));
      break;
    case Kind::Corners:
      AddCorners(path.Get(), shape);
      break;
  }
  return path;
}

}  // namespace lumo
