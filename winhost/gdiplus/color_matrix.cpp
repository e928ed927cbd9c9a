#include "winhost/gdiplus/color_matrix.h"

#include <algorithm>
#include <cmath>

namespace winhost {

std::optional<double> FadeOf(const Gdiplus::ColorMatrix& matrix) {
  for (int row = 0; row < 5; ++row) {
    for (int column = 0; column < 5; ++column) {
      if (row == 3 && column == 3) continue;
      if (matrix.m[row][column] != (row == column ? 1.0f : 0.0f)) return std::nullopt;
    }
  }
  const auto fade = static_cast<double>(matrix.m[3][3]);
  return fade >= 0 && fade <= 1 ? std::optional(fade) : std::nullopt;
}

std::uint32_t Transform(const Gdiplus::ColorMatrix& matrix, std::uint32_t argb) {
  constexpr int kShifts[] = {16, 8, 0, 24};  // red, green, blue, alpha
  double color[5] = {0, 0, 0, 0, 1};
  for (int i = 0; i < 4; ++i) color[i] = (argb >> kShifts[i] & 0xFF) / 255.0;
  std::uint32_t result = 0;
  for (int column = 0; column < 4; ++column) {
    double sum = 0;
    for (int row = 0; row < 5; ++row) sum += color[row] * static_cast<double>(matrix.m[row][column]);
    const double kept = std::isfinite(sum) ? std::clamp(sum, 0.0, 1.0) : 0;
    result |= static_cast<std::uint32_t>(std::lround(kept * 255)) << kShifts[column];
  }
  return result;
}

}  // namespace winhost
