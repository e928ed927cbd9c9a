// Vector pictures: SVG text drawn into a bitmap at the scale of the window.
#pragma once

#include "lumo/core/types.h"

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace lumo {

class ImageInfo;

// Straight blue, green, red, alpha; rows from the top without padding.
struct VectorPixels {
  int width = 0;
  int height = 0;
  std::vector<BYTE> bgra;
};

// Limits beyond which a picture is refused: it comes from a skin, which may be damaged, and drawing it must end soon.
inline constexpr size_t kMaxSvgText = 1 << 20;      // bytes
inline constexpr int kMaxSvgSide = 16384;           // pixels
inline constexpr LONGLONG kMaxSvgPixels = 1 << 24;  // in all

// The factor that the "scale" text adds: 1 unless it is a decimal number above 0.
double ReadScaleFactor(StringView text);

// Draws the picture at scale_percent / 100 times the factor. With a `color` (ARGB), every pixel that is not fully
// transparent takes its red, green and blue and keeps its own alpha. None when the text is not SVG, has no size, or is
// beyond the limits.
std::optional<VectorPixels> DrawVector(std::string_view svg, int scale_percent, StringView scale_text,
                                       const DWORD* color);

// The same as a picture, marked as drawn for its scale; `color` names a global colour or is "".
std::shared_ptr<ImageInfo> MakeVectorImage(std::string_view svg, int scale_percent, StringView color,
                                           StringView scale_text);

}  // namespace lumo
