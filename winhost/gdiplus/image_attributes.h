// How an image is to be drawn: a colour matrix, and what lies beyond the source rectangle.
#pragma once

#include <optional>

#include "winhost/gdiplus/handles.h"

namespace winhost {

struct ImageAttributes final : GraphicsObject {
  static constexpr ObjectKind kKind = ObjectKind::GpImageAttributes;
  ImageAttributes() : GraphicsObject(kKind) {}

  std::optional<Gdiplus::ColorMatrix> colors;
  Gdiplus::WrapMode wrap = Gdiplus::WrapModeClamp;
};

}  // namespace winhost
