// Logical fonts: what a LOGFONT asks for, in the terms of the text engine.
#pragma once

#include "winhost/gdi/object_table.h"
#include "winhost/gdi/text_font.h"

namespace winhost {

struct Font final : GraphicsObject {
  static constexpr ObjectKind kKind = ObjectKind::Font;
  explicit Font(const LOGFONTW& values);

  LOGFONTW logfont;
  TextFont text;  // the em size in whole pixels, as GDI has it
};

HFONT StockGuiFont();
// The em size in pixels that a LOGFONT's height asks for, of this face.
double EmSize(const LOGFONTW& logfont, const std::string& family);

}  // namespace winhost
