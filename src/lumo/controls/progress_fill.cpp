#include "lumo/controls/progress_fill.h"

#include <limits.h>

namespace lumo {
namespace {

// The least maximum lies one above the minimum, also where a 32-bit number ends.
double Top(const ProgressRange& range) {
  const double least = static_cast<double>(range.min) + 1;
  return range.max < least ? least : range.max;
}

LONG Part(double distance, LONG length, const ProgressRange& range) {
  return static_cast<LONG>(distance * length / (Top(range) - range.min));
}

}  // namespace

void ProgressRange::Settle() {
  if (max <= min) max = min < INT_MAX ? min + 1 : INT_MAX;
  if (value > Top(*this)) value = Top(*this);
  if (!(value >= min)) value = min;  // also what is no number
}

double ProgressRange::Fraction() const { return (value - min) / (Top(*this) - min); }

RECT ProgressFill(const ProgressRange& range, LONG width, LONG height, bool horizontal) {
  if (horizontal) return {0, 0, Part(range.value - range.min, width, range), height};
  return {0, Part(Top(range) - range.value, height, range), width, height};
}

}  // namespace lumo
