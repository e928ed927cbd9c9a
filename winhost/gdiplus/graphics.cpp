#include "winhost/gdiplus/graphics.h"

#include <algorithm>
#include <numbers>

namespace winhost {
namespace {

bool Antialiased(Gdiplus::SmoothingMode mode) {
  return mode == Gdiplus::SmoothingModeAntiAlias || mode == Gdiplus::SmoothingModeAntiAlias8x8 ||
         mode == Gdiplus::SmoothingModeHighQuality;
}

// Transforms by `change` before (prepend) or after (append) what is there.
void Apply(cairo_matrix_t& world, const cairo_matrix_t& change, Gdiplus::MatrixOrder order) {
  const cairo_matrix_t before = world;
  if (order == Gdiplus::MatrixOrderAppend) {
    cairo_matrix_multiply(&world, &before, &change);
  } else {
    cairo_matrix_multiply(&world, &change, &before);
  }
}

bool Usable(const cairo_matrix_t& matrix) {
  const double determinant = matrix.xx * matrix.yy - matrix.xy * matrix.yx;
  return std::isfinite(matrix.x0) && std::isfinite(matrix.y0) && std::isfinite(determinant) && determinant != 0;
}

}  // namespace

Drawing BeginDrawing(Gdiplus::GpGraphics* handle, Grid grid) {
  Drawing drawing;
  drawing.graphics = GraphicsObjectAs<Graphics>(handle);
  drawing.dc = drawing.graphics ? GraphicsObjectAs<DeviceContext>(drawing.graphics->dc) : nullptr;
  if (!drawing.dc) {
    drawing.status = Gdiplus::InvalidParameter;
    return drawing;
  }
  drawing.context = OpenCanvas(*drawing.dc);
  if (!drawing.context) return drawing;
  const GraphicsModes& modes = drawing.graphics->modes;
  cairo_t* context = drawing.context.get();
  if (grid == Grid::Shapes && !modes.PixelEdgesAtWholes()) cairo_translate(context, 0.5, 0.5);
  if (Usable(modes.world)) cairo_transform(context, &modes.world);
  cairo_set_antialias(context, Antialiased(modes.smoothing) ? CAIRO_ANTIALIAS_DEFAULT : CAIRO_ANTIALIAS_NONE);
  return drawing;
}

}  // namespace winhost

namespace Gdiplus::DllExports {

using winhost::GraphicsObjectAs;

namespace {

template <class Mode>
GpStatus SetMode(GpGraphics* handle, Mode winhost::GraphicsModes::*member, Mode mode, Mode last) {
  const auto graphics = GraphicsObjectAs<winhost::Graphics>(handle);
  if (!graphics || mode < 0 || mode > last) return InvalidParameter;
  graphics->modes.*member = mode;
  return Ok;
}

GpStatus Transform(GpGraphics* handle, const cairo_matrix_t& change, MatrixOrder order) {
  const auto graphics = GraphicsObjectAs<winhost::Graphics>(handle);
  if (!graphics || (order != MatrixOrderPrepend && order != MatrixOrderAppend)) return InvalidParameter;
  winhost::Apply(graphics->modes.world, change, order);
  return Ok;
}

}  // namespace

GpStatus GdipCreateFromHDC(HDC dc, GpGraphics** graphics) {
  if (!graphics) return InvalidParameter;
  if (const auto status = winhost::RefuseMaking("GdipCreateFromHDC")) return *status;
  if (!dc) return OutOfMemory;
  if (!GraphicsObjectAs<winhost::DeviceContext>(dc)) return InvalidParameter;
  return winhost::Hand(std::make_shared<winhost::Graphics>(dc), graphics);
}

GpStatus GdipDeleteGraphics(GpGraphics* graphics) { return winhost::Drop<winhost::Graphics>(graphics); }

GpStatus GdipSetSmoothingMode(GpGraphics* graphics, SmoothingMode mode) {
  return SetMode(graphics, &winhost::GraphicsModes::smoothing, mode, SmoothingModeAntiAlias8x8);
}
GpStatus GdipSetPixelOffsetMode(GpGraphics* graphics, PixelOffsetMode mode) {
  return SetMode(graphics, &winhost::GraphicsModes::offset, mode, PixelOffsetModeHalf);
}
GpStatus GdipSetTextRenderingHint(GpGraphics* graphics, TextRenderingHint hint) {
  return SetMode(graphics, &winhost::GraphicsModes::text, hint, TextRenderingHintClearTypeGridFit);
}

GpStatus GdipSaveGraphics(GpGraphics* handle, GraphicsState* state) {
  const auto graphics = GraphicsObjectAs<winhost::Graphics>(handle);
  if (!graphics || !state) return InvalidParameter;
  *state = ++graphics->last_state;
  graphics->saved.emplace_back(*state, graphics->modes);
  return Ok;
}

GpStatus GdipRestoreGraphics(GpGraphics* handle, GraphicsState state) {
  const auto graphics = GraphicsObjectAs<winhost::Graphics>(handle);
  if (!graphics) return InvalidParameter;
  auto& saved = graphics->saved;
  const auto found = std::ranges::find(saved, state, [](const auto& entry) { return entry.first; });
  if (found == saved.end()) return InvalidParameter;
  graphics->modes = found->second;
  saved.erase(found, saved.end());
  return Ok;
}

GpStatus GdipTranslateWorldTransform(GpGraphics* graphics, REAL dx, REAL dy, GpMatrixOrder order) {
  return Transform(graphics, {1, 0, 0, 1, dx, dy}, order);
}

GpStatus GdipRotateWorldTransform(GpGraphics* graphics, REAL degrees, GpMatrixOrder order) {
  cairo_matrix_t turn;
  cairo_matrix_init_rotate(&turn, static_cast<double>(degrees) * std::numbers::pi / 180);
  return Transform(graphics, turn, order);
}

GpStatus GdipResetWorldTransform(GpGraphics* handle) {
  const auto graphics = GraphicsObjectAs<winhost::Graphics>(handle);
  if (!graphics) return InvalidParameter;
  graphics->modes.world = {1, 0, 0, 1, 0, 0};
  return Ok;
}

}  // namespace Gdiplus::DllExports
