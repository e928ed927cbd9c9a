// Solid brushes, and the colours that stand for themselves in a brush's place.
#pragma once

#include <optional>

#include "winhost/gdi/object_table.h"

namespace winhost {

struct SolidBrush final : GraphicsObject {
  static constexpr ObjectKind kKind = ObjectKind::Brush;
  SolidBrush(COLORREF value, bool hollow_one) : GraphicsObject(kKind), color(value), hollow(hollow_one) {}
  COLORREF color;
  bool hollow;  // paints nothing
};

// One of WHITE_BRUSH, BLACK_BRUSH and NULL_BRUSH; null for another index.
HBRUSH StockBrush(int index);

}  // namespace winhost
