#include "winhost/gdiplus/outline_mask.h"

#include <cmath>
#include <map>
#include <vector>

namespace winhost {
namespace {

constexpr double kMostPixels = 32 * 1024;  // of one outline; larger ones are few, and laying them down is most of it
constexpr std::size_t kMostSteps = 64;
constexpr std::size_t kGeneration = 64;

// The path, and all else that its coverage depends on.
using Key = std::vector<double>;

struct Mask {
  CairoSurface coverage;  // CAIRO_FORMAT_A8; none when the outline is not to be kept
  int left = 0;           // of the coverage, from the origin without its fraction
  int top = 0;
};

Key KeyOf(const Path& path, const Pen* pen, cairo_antialias_t antialias, double x, double y) {
  Key key{pen ? pen->width : -1 - path.fill, static_cast<double>(antialias), x, y};
  key.reserve(key.size() + path.elements.size() * 7);
  for (const auto& [step, points] : path.elements) {
    key.push_back(static_cast<double>(step));
    for (const PathPoint& point : points) key.insert(key.end(), {point.x, point.y});
  }
  return key;
}

void Trace(cairo_t* context, const Path& path, const Pen* pen) {
  path.AddTo(context);
  if (pen) {
    pen->Shape(context);
  } else {
    cairo_set_fill_rule(context,
                        path.fill == Gdiplus::FillModeWinding ? CAIRO_FILL_RULE_WINDING : CAIRO_FILL_RULE_EVEN_ODD);
  }
}

struct Extents {
  double left, top, right, bottom;
};

Extents ExtentsOf(const Path& path, const Pen* pen, double x, double y) {
  const CairoSurface nothing(cairo_image_surface_create(CAIRO_FORMAT_A8, 0, 0));
  const CairoContext context(cairo_create(nothing.get()));
  cairo_translate(context.get(), x, y);
  Trace(context.get(), path, pen);
  cairo_identity_matrix(context.get());
  Extents extents;
  const auto measure = pen ? cairo_stroke_extents : cairo_fill_extents;
  measure(context.get(), &extents.left, &extents.top, &extents.right, &extents.bottom);
  return {std::floor(extents.left), std::floor(extents.top), std::ceil(extents.right), std::ceil(extents.bottom)};
}

Mask Render(const Path& path, const Pen* pen, cairo_antialias_t antialias, double x, double y) {
  const Extents extents = ExtentsOf(path, pen, x, y);
  const double width = extents.right - extents.left, height = extents.bottom - extents.top;
  constexpr double kFar = 1 << 20;
  if (!(width > 0 && height > 0 && width * height <= kMostPixels)) return {};
  if (std::abs(extents.left) > kFar || std::abs(extents.top) > kFar) return {};
  Mask mask{
      CairoSurface(cairo_image_surface_create(CAIRO_FORMAT_A8, static_cast<int>(width), static_cast<int>(height))),
      static_cast<int>(extents.left), static_cast<int>(extents.top)};
  const CairoContext context(cairo_create(mask.coverage.get()));
  cairo_translate(context.get(), x - extents.left, y - extents.top);
  cairo_set_antialias(context.get(), antialias);
  Trace(context.get(), path, pen);
  pen ? cairo_stroke(context.get()) : cairo_fill(context.get());
  cairo_surface_flush(mask.coverage.get());
  return mask;
}

class Masks {
 public:
  template <class Make>
  const Mask& Get(const Key& key, const Make& make) {
    if (const auto found = young_.find(key); found != young_.end()) return found->second;
    if (young_.size() >= kGeneration) {
      old_ = std::move(young_);
      young_.clear();
    }
    auto aged = old_.extract(key);
    if (aged) return young_.insert(std::move(aged)).position->second;
    return young_.emplace(key, make()).first->second;
  }

 private:
  std::map<Key, Mask> young_, old_;
};

bool MovesOnly(const cairo_matrix_t& matrix) {
  return matrix.xx == 1 && matrix.yy == 1 && matrix.xy == 0 && matrix.yx == 0;
}

}  // namespace

bool PaintKeptOutline(cairo_t* context, const Path& path, const Pen* pen) {
  cairo_matrix_t matrix;
  cairo_get_matrix(context, &matrix);
  if (!MovesOnly(matrix) || path.elements.size() > kMostSteps) return false;
  const double x = std::floor(matrix.x0), y = std::floor(matrix.y0);
  const double x_part = matrix.x0 - x, y_part = matrix.y0 - y;
  const cairo_antialias_t antialias = cairo_get_antialias(context);
  thread_local Masks masks;
  const Mask& mask = masks.Get(KeyOf(path, pen, antialias, x_part, y_part),
                               [&] { return Render(path, pen, antialias, x_part, y_part); });
  if (!mask.coverage) return false;
  cairo_identity_matrix(context);  // the source's pattern stays where it was put
  cairo_mask_surface(context, mask.coverage.get(), x + mask.left, y + mask.top);
  return true;
}

}  // namespace winhost
