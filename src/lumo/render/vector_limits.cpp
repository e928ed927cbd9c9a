#include "lumo/render/vector_limits.h"

#include <windows.h>

#include <math.h>
#include <nanosvg.h>

#include <algorithm>
#include <vector>

#include "lumo/render/vector_image.h"

namespace lumo {
namespace {

constexpr double kFarthest = 5e5;        // pixels from the origin; the rasteriser counts in 1/1024 pixels of 32 bits
constexpr double kWidestStroke = 1e4;    // pixels
constexpr double kShortestDash = 0.25;   // pixels
constexpr double kLargestFactor = 1e15;  // of a gradient's transformation
constexpr double kMostSegments = 4e6;
constexpr double kMostWork = 1e9;
constexpr double kMostGradientUses = 3.2e7;

double CountOf(std::string_view text, std::string_view word) {
  double count = 0;
  for (size_t at = text.find(word); at != std::string_view::npos; at = text.find(word, at + word.size())) ++count;
  return count;
}

bool Within(double value, double limit) { return value >= -limit && value <= limit; }  // false for what is no number

// How many edges are beside each other in each row, and how many there are.
class Work {
 public:
  explicit Work(int height) : changes_(static_cast<size_t>(height) + 1) {}

  // Edges spread over the rows from top to bottom, in pixels.
  void Add(double edges, double top, double bottom) {
    segments_ += edges;
    const auto rows = static_cast<double>(changes_.size() - 1);
    if (bottom < 0 || top >= rows) return;
    const auto first = static_cast<size_t>(std::max(top, 0.0));
    const auto last = static_cast<size_t>(std::min(bottom, rows - 1));
    const double beside = std::min(edges, 3.0) + edges / (bottom - top + 1);
    changes_[first] += beside;
    changes_[last + 1] -= beside;
  }
  bool IsBounded() const {
    double beside = 0, sum = 0;
    for (const double change : changes_) {
      beside += change;
      sum += beside * beside;
    }
    return segments_ <= kMostSegments && sum <= kMostWork;
  }

 private:
  std::vector<double> changes_;
  double segments_ = 0;
};

struct Bounds {
  double left, top, right, bottom;
};

// Of one curve's four points; false when one is out of range.
bool BoundsOf(const float* points, double scale, Bounds* bounds) {
  *bounds = {kFarthest, kFarthest, -kFarthest, -kFarthest};
  for (int i = 0; i < 4; ++i) {
    const double x = points[i * 2] * scale, y = points[i * 2 + 1] * scale;
    if (!Within(x, kFarthest) || !Within(y, kFarthest)) return false;
    *bounds = {std::min(bounds->left, x), std::min(bounds->top, y), std::max(bounds->right, x),
               std::max(bounds->bottom, y)};
  }
  return true;
}

bool IsPaintWithinLimits(const NSVGpaint& paint) {
  if (paint.type != NSVG_PAINT_LINEAR_GRADIENT && paint.type != NSVG_PAINT_RADIAL_GRADIENT) return true;
  for (const float factor : paint.gradient->xform) {
    if (!Within(factor, kLargestFactor)) return false;
  }
  for (int i = 0; i < paint.gradient->nstops; ++i) {
    if (!Within(paint.gradient->stops[i].offset, kLargestFactor)) return false;
  }
  return true;
}

bool HasStroke(const NSVGshape& shape) { return shape.stroke.type != NSVG_PAINT_NONE; }

bool IsStrokeWithinLimits(NSVGshape* shape, double scale) {
  if (!HasStroke(*shape)) return true;
  if (!Within(shape->strokeWidth * scale, kWidestStroke) || !Within(shape->miterLimit, kLargestFactor)) return false;
  if (!Within(shape->strokeDashOffset * scale, kFarthest)) return false;
  double longest = 0;
  for (int i = 0; i < shape->strokeDashCount; ++i) {
    if (!Within(shape->strokeDashArray[i] * scale, kFarthest)) return false;
    longest = std::max(longest, shape->strokeDashArray[i] * scale);
  }
  if (longest < kShortestDash) shape->strokeDashCount = 0;
  return true;
}

// A curve becomes a number of lines that grows with the root of its length; one without any length is halved to the
// end, which costs as much time as the longest.
double LinesOf(double length) { return length < 0.01 ? 64 : std::min(1024.0, 2 + 2 * sqrt(length)); }

// Lines that a stroke adds for one line of the path: two sides, and a round join or cap.
double StrokeFactor(const NSVGshape& shape, double scale) {
  const bool round = shape.strokeLineJoin == NSVG_JOIN_ROUND || shape.strokeLineCap == NSVG_CAP_ROUND;
  return round ? 4 + 3 * sqrt(fabs(shape.strokeWidth * scale)) : 4;
}

double DashesOf(const NSVGshape& shape, double scale, double length) {
  double pattern = 0;
  for (int i = 0; i < shape.strokeDashCount; ++i) pattern += shape.strokeDashArray[i] * scale;
  return shape.strokeDashCount ? length / pattern * shape.strokeDashCount : 0;
}

void AddCurve(const NSVGshape& shape, double scale, const Bounds& bounds, Work* work) {
  const double length = (bounds.right - bounds.left) + (bounds.bottom - bounds.top);
  const double lines = LinesOf(length);
  if (shape.fill.type != NSVG_PAINT_NONE) work->Add(lines, bounds.top, bounds.bottom);
  if (!HasStroke(shape)) return;
  const double reach = fabs(shape.strokeWidth * scale);
  const double pieces = lines + DashesOf(shape, scale, length);
  work->Add(pieces * StrokeFactor(shape, scale), bounds.top - reach, bounds.bottom + reach);
}

bool AddShape(NSVGshape* shape, double scale, Work* work) {
  if (!Within(shape->opacity, 1) || !IsPaintWithinLimits(shape->fill) || !IsPaintWithinLimits(shape->stroke) ||
      !IsStrokeWithinLimits(shape, scale)) {
    return false;
  }
  for (const NSVGpath* path = shape->paths; path; path = path->next) {
    for (int i = 0; i + 3 < path->npts; i += 3) {
      Bounds bounds;
      if (!BoundsOf(path->pts + i * 2, scale, &bounds)) return false;
      AddCurve(*shape, scale, bounds, work);
    }
  }
  return true;
}

}  // namespace

bool IsTextWithinLimits(std::string_view svg) {
  if (svg.size() > kMaxSvgText) return false;
  const double gradients = CountOf(svg, "stop") + CountOf(svg, "Gradient");
  return gradients * CountOf(svg, "<") <= kMostGradientUses;
}

bool IsDrawingWithinLimits(NSVGimage* image, double scale, int height) {
  Work work(height);
  for (NSVGshape* shape = image->shapes; shape; shape = shape->next) {
    if (!AddShape(shape, scale, &work)) return false;
  }
  return work.IsBounded();
}

}  // namespace lumo
