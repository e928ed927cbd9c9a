// Brushes: one colour, or a linear gradient.
#pragma once

#include <vector>

#include "winhost/gdi/canvas.h"
#include "winhost/gdiplus/handles.h"

namespace winhost {

struct Brush : GraphicsObject {
  static constexpr ObjectKind kKind = ObjectKind::GpBrush;
  Brush() : GraphicsObject(kKind) {}
  // Makes it the source of what is drawn next; the context's space is the brush's.
  virtual void Use(cairo_t* context) const = 0;
  virtual std::shared_ptr<Brush> Copy() const = 0;
};

struct SolidFill final : Brush {
  explicit SolidFill(Gdiplus::ARGB value) : color(value) {}
  void Use(cairo_t* context) const override;
  std::shared_ptr<Brush> Copy() const override { return std::make_shared<SolidFill>(color); }

  Gdiplus::ARGB color;
};

struct LineGradient final : Brush {
  struct Stop {
    double position;
    double share;  // of the second colour
  };
  void Use(cairo_t* context) const override;
  std::shared_ptr<Brush> Copy() const override;

  double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
  Gdiplus::ARGB color1 = 0, color2 = 0;
  bool reflect = false;  // every other repetition runs backwards
  std::vector<Stop> stops{{0, 0}, {1, 1}};
};

}  // namespace winhost
