// GDI+ fonts: their em size is exact, not a whole number of pixels.
#pragma once

#include "winhost/gdi/text_font.h"
#include "winhost/gdiplus/handles.h"

namespace winhost {

struct GpFontObject final : GraphicsObject {
  static constexpr ObjectKind kKind = ObjectKind::GpFont;
  explicit GpFontObject(TextFont font) : GraphicsObject(kKind), text(std::move(font)) {}
  TextFont text;
};

}  // namespace winhost
