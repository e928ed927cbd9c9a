// Colour matrices over straight pixels.
#pragma once

#include <cstdint>
#include <optional>

#include "winhost/gdiplus/handles.h"

namespace winhost {

// The factor of a matrix that does nothing but fade; none for any other.
std::optional<double> FadeOf(const Gdiplus::ColorMatrix& matrix);
std::uint32_t Transform(const Gdiplus::ColorMatrix& matrix, std::uint32_t argb);

}  // namespace winhost
