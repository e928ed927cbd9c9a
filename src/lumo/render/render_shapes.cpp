#include "lumo/core/global_resources.h"
#include "lumo/render/rect_math.h"
#include "lumo/render/render_gdiplus.h"
#include "lumo/render/rounded_path.h"

// Fills and outlines.

namespace lumo {
namespace {

DWORD WithAlpha(DWORD color, BYTE alpha) {
  return alpha == 255 ? color : ((color >> 24) * alpha / 255) << 24 | (color & 0xFFFFFF);
}

// A circle or ellipse inside the rectangle, inset for a pen and half a pixel.
struct Oval {
  Oval(const RECT& rect, int pen_width)
      : x(static_cast<float>(rect.left) + static_cast<float>(pen_width) / 2 + 0.5F),
        y(static_cast<float>(rect.top) + static_cast<float>(pen_width) / 2 + 0.5F),
        width(static_cast<float>(WidthOf(rect)) - static_cast<float>(pen_width) - 1),
        height(static_cast<float>(HeightOf(rect)) - static_cast<float>(pen_width) - 1) {}

  float x, y, width, height;
};

}  // namespace

void RenderGdiplus::FillShape(const RECT& rect, const RECT& round, const UniqueGpBrush& brush) {
  // Whole pixels need no smooth edges, which on whole coordinates would be half covered.
  const bool plain = !HasRound(round);
  const UniqueGraphics graphics = MakeGraphics(dc_.Get(), plain);
  if (!graphics || !brush || IsEmpty(rect)) return;
  if (plain) {
    Record(gdip::GdipFillRectangleI(graphics.Get(), brush.Get(), rect.left, rect.top, WidthOf(rect), HeightOf(rect)));
  } else if (const UniqueGpPath path = MakeRoundedPath(rect, round, 0)) {
    Record(gdip::GdipFillPath(graphics.Get(), brush.Get(), path.Get()));
  }
}

void RenderGdiplus::FillRectByName(const RECT& rect, const RECT& round, StringView color, BYTE alpha) {
  FillRect(rect, round, GetColor(color), alpha);
}

void RenderGdiplus::FillRect(const RECT& rect, const RECT& round, DWORD color, BYTE alpha) {
  FillShape(rect, round, MakeSolidBrush(WithAlpha(color, alpha)));
}

void RenderGdiplus::FillGradientByName(const RECT& rect, const RECT& round, StringView color1, StringView color2,
                                       int mode, BYTE alpha) {
  FillGradient(rect, round, GetColor(color1), GetColor(color2), mode, alpha);
}

void RenderGdiplus::FillGradient(const RECT& rect, const RECT& round, DWORD color1, DWORD color2, int mode,
                                 BYTE alpha) {
  FillShape(rect, round, MakeGradientBrush(rect, WithAlpha(color1, alpha), WithAlpha(color2, alpha), mode));
}

void RenderGdiplus::DrawLine(POINT from, POINT to, int width, DWORD color) {
  const UniqueGraphics graphics = MakeGraphics(dc_.Get(), false);
  const UniqueGpPen pen = MakePen(color, static_cast<float>(width));
  Record(gdip::GdipDrawLineI(graphics.Get(), pen.Get(), from.x, from.y, to.x, to.y));
}

void RenderGdiplus::DrawRect(const RECT& rect, int width, DWORD color) {
  const UniqueGraphics graphics = MakeGraphics(dc_.Get(), true);
  const UniqueGpPen pen = MakePen(color, static_cast<float>(width));
  Record(gdip::GdipDrawRectangleI(graphics.Get(), pen.Get(), rect.left, rect.top, WidthOf(rect), HeightOf(rect)));
}

void RenderGdiplus::DrawRoundRect(const RECT& rect, const RECT& round, int width, DWORD color) {
  const UniqueGpPath path = MakeRoundedPath(rect, round, width);
  if (!path) return;
  const UniqueGraphics graphics = MakeGraphics(dc_.Get(), false);
  const UniqueGpPen pen = MakePen(color, static_cast<float>(width));
  Record(gdip::GdipDrawPath(graphics.Get(), pen.Get(), path.Get()));
}

void RenderGdiplus::DrawRoundRectByName(const RECT& rect, const RECT& round, int width, StringView color) {
  DrawRoundRect(rect, round, width, GetColor(color));
}

void RenderGdiplus::DrawCircleByName(const RECT& rect, int width, StringView color) {
  DrawCircle(rect, width, GetColor(color));
}

void RenderGdiplus::DrawCircle(const RECT& rect, int width, DWORD color) {
  const UniqueGraphics graphics = MakeGraphics(dc_.Get(), false);
  const UniqueGpPen pen = MakePen(color, static_cast<float>(width));
  const Oval oval(rect, width);
  Record(gdip::GdipDrawEllipse(graphics.Get(), pen.Get(), oval.x, oval.y, oval.width, oval.height));
}

void RenderGdiplus::FillCircle(const RECT& rect, DWORD color) {
  const UniqueGraphics graphics = MakeGraphics(dc_.Get(), false);
  const Oval oval(rect, 0);
  Record(gdip::GdipFillEllipse(graphics.Get(), MakeSolidBrush(color).Get(), oval.x, oval.y, oval.width, oval.height));
}

}  // namespace lumo
