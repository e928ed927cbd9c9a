// Pens: a brush and a width. Mitred joins, flat ends, centred on the outline.
#pragma once

#include "winhost/gdiplus/brush.h"

namespace winhost {

struct Pen final : GraphicsObject {
  static constexpr ObjectKind kKind = ObjectKind::GpPen;
  Pen(std::shared_ptr<Brush> paint, double units) : GraphicsObject(kKind), brush(std::move(paint)), width(units) {}
  // Sets what strokes in this context will be. A line is at least a pixel wide.
  void Shape(cairo_t* context) const;
  // Strokes the context's path and forgets it.
  void Stroke(cairo_t* context) const;

  std::shared_ptr<Brush> brush;
  double width;
};

}  // namespace winhost
