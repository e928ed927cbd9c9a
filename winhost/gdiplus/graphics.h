// A GDI+ graphics: the DC that it draws through, its modes and its world transform.
#pragma once

#include <cmath>
#include <optional>
#include <vector>

#include "winhost/gdi/canvas.h"
#include "winhost/gdiplus/handles.h"

namespace winhost {

struct GraphicsModes {
  Gdiplus::SmoothingMode smoothing = Gdiplus::SmoothingModeNone;
  Gdiplus::PixelOffsetMode offset = Gdiplus::PixelOffsetModeNone;
  Gdiplus::TextRenderingHint text = Gdiplus::TextRenderingHintSystemDefault;
  cairo_matrix_t world{1, 0, 0, 1, 0, 0};

  bool PixelEdgesAtWholes() const {
    return offset == Gdiplus::PixelOffsetModeHalf || offset == Gdiplus::PixelOffsetModeHighQuality;
  }
};

struct Graphics final : GraphicsObject {
  static constexpr ObjectKind kKind = ObjectKind::GpGraphics;
  explicit Graphics(HDC handle) : GraphicsObject(kKind), dc(handle) {}

  HDC dc;
  GraphicsModes modes;
  std::vector<std::pair<Gdiplus::GraphicsState, GraphicsModes>> saved;
  Gdiplus::GraphicsState last_state = 0;
};

// How coordinates become pixels: as shapes have it, moved to pixel centres where the offset mode says so, or plainly,
// as text and images do.
enum class Grid { Shapes, Plain };

// Where a graphics draws, for one call. `context` is null when there is nothing to draw on or into.
struct Drawing {
  Gdiplus::GpStatus status = Gdiplus::Ok;
  std::shared_ptr<Graphics> graphics;
  std::shared_ptr<DeviceContext> dc;
  CairoContext context;
  explicit operator bool() const { return context != nullptr; }
};

Drawing BeginDrawing(Gdiplus::GpGraphics* graphics, Grid grid);

}  // namespace winhost
