// Filling and drawing paths, rectangles, ellipses, lines and arcs.
#include <cmath>

#include "winhost/gdiplus/brush.h"
#include "winhost/gdiplus/graphics.h"
#include "winhost/gdiplus/outline_mask.h"
#include "winhost/gdiplus/path.h"
#include "winhost/gdiplus/pen.h"

namespace Gdiplus::DllExports {

using winhost::ArcPoints;
using winhost::BeginDrawing;
using winhost::GraphicsObjectAs;
using winhost::Grid;

namespace {

struct Box {
  double x, y, width, height;
  bool Finite() const { return std::isfinite(x + y + width + height); }
  bool HasExtent() const { return width > 0 && height > 0; }
};

Box ToBox(REAL x, REAL y, REAL width, REAL height) { return {x, y, width, height}; }

Box ToBox(INT x, INT y, INT width, INT height) {
  return {static_cast<double>(x), static_cast<double>(y), static_cast<double>(width), static_cast<double>(height)};
}

void AddRectangle(cairo_t* context, const Box& box) { cairo_rectangle(context, box.x, box.y, box.width, box.height); }

void AddArc(cairo_t* context, const Box& box, double start, double sweep) {
  const auto p = ArcPoints(box.x, box.y, box.width, box.height, start, sweep);
  cairo_move_to(context, p[0].x, p[0].y);
  for (std::size_t i = 1; i + 2 < p.size(); i += 3) {
    cairo_curve_to(context, p[i].x, p[i].y, p[i + 1].x, p[i + 1].y, p[i + 2].x, p[i + 2].y);
  }
}

void AddEllipse(cairo_t* context, const Box& box) {
  AddArc(context, box, 0, 360);
  cairo_close_path(context);
}

// `add` puts the outline into the context.
template <class Add>
GpStatus Fill(GpGraphics* graphics, GpBrush* brush_handle, const Add& add) {
  const auto brush = GraphicsObjectAs<winhost::Brush>(brush_handle);
  if (!brush) return InvalidParameter;
  const auto drawing = BeginDrawing(graphics, Grid::Shapes);
  if (!drawing) return drawing.status;
  brush->Use(drawing.context.get());
  add(drawing.context.get());
  cairo_fill(drawing.context.get());
  return Ok;
}

template <class Add>
GpStatus Draw(GpGraphics* graphics, GpPen* pen_handle, const Add& add) {
  const auto pen = GraphicsObjectAs<winhost::Pen>(pen_handle);
  if (!pen) return InvalidParameter;
  const auto drawing = BeginDrawing(graphics, Grid::Shapes);
  if (!drawing) return drawing.status;
  add(drawing.context.get());
  pen->Stroke(drawing.context.get());
  return Ok;
}

GpStatus FillBox(GpGraphics* graphics, GpBrush* brush, const Box& box, void (*add)(cairo_t*, const Box&)) {
  if (!box.Finite()) return InvalidParameter;
  return Fill(graphics, brush, [&](cairo_t* context) {
    if (box.HasExtent()) add(context, box);
  });
}

GpStatus DrawBox(GpGraphics* graphics, GpPen* pen, const Box& box, void (*add)(cairo_t*, const Box&)) {
  if (!box.Finite()) return InvalidParameter;
  return Draw(graphics, pen, [&](cairo_t* context) {
    if (box.width >= 0 && box.height >= 0) add(context, box);
  });
}

GpStatus DrawArc(GpGraphics* graphics, GpPen* pen, const Box& box, REAL start, REAL sweep) {
  if (!box.HasExtent() || !box.Finite() || !std::isfinite(start + sweep)) return InvalidParameter;
  return Draw(graphics, pen, [&](cairo_t* context) { AddArc(context, box, start, sweep); });
}

}  // namespace

GpStatus GdipFillPath(GpGraphics* graphics, GpBrush* brush_handle, GpPath* handle) {
  const auto path = GraphicsObjectAs<winhost::Path>(handle);
  const auto brush = GraphicsObjectAs<winhost::Brush>(brush_handle);
  if (!path || !brush) return InvalidParameter;
  const auto drawing = BeginDrawing(graphics, Grid::Shapes);
  if (!drawing) return drawing.status;
  cairo_t* const context = drawing.context.get();
  brush->Use(context);
  if (winhost::PaintKeptOutline(context, *path, nullptr)) return Ok;
  cairo_set_fill_rule(context, path->fill == FillModeWinding ? CAIRO_FILL_RULE_WINDING : CAIRO_FILL_RULE_EVEN_ODD);
  path->AddTo(context);
  cairo_fill(context);
  return Ok;
}

GpStatus GdipDrawPath(GpGraphics* graphics, GpPen* pen_handle, GpPath* handle) {
  const auto path = GraphicsObjectAs<winhost::Path>(handle);
  const auto pen = GraphicsObjectAs<winhost::Pen>(pen_handle);
  if (!path || !pen) return InvalidParameter;
  const auto drawing = BeginDrawing(graphics, Grid::Shapes);
  if (!drawing) return drawing.status;
  cairo_t* const context = drawing.context.get();
  pen->brush->Use(context);
  if (winhost::PaintKeptOutline(context, *path, pen.get())) return Ok;
  path->AddTo(context);
  pen->Stroke(context);
  return Ok;
}

GpStatus GdipFillRectangleI(GpGraphics* graphics, GpBrush* brush, INT x, INT y, INT width, INT height) {
  return FillBox(graphics, brush, ToBox(x, y, width, height), AddRectangle);
}

GpStatus GdipDrawRectangleI(GpGraphics* graphics, GpPen* pen, INT x, INT y, INT width, INT height) {
  return DrawBox(graphics, pen, ToBox(x, y, width, height), AddRectangle);
}
GpStatus GdipFillEllipse(GpGraphics* graphics, GpBrush* brush, REAL x, REAL y, REAL width, REAL height) {
  return FillBox(graphics, brush, ToBox(x, y, width, height), AddEllipse);
}

GpStatus GdipDrawEllipse(GpGraphics* graphics, GpPen* pen, REAL x, REAL y, REAL width, REAL height) {
  return DrawBox(graphics, pen, ToBox(x, y, width, height), AddEllipse);
}

GpStatus GdipDrawLineI(GpGraphics* graphics, GpPen* pen, INT x1, INT y1, INT x2, INT y2) {
  return Draw(graphics, pen, [=](cairo_t* context) {
    cairo_move_to(context, x1, y1);
    cairo_line_to(context, x2, y2);
  });
}

GpStatus GdipDrawArc(GpGraphics* graphics, GpPen* pen, REAL x, REAL y, REAL width, REAL height, REAL start,
                     REAL sweep) {
  return DrawArc(graphics, pen, ToBox(x, y, width, height), start, sweep);
}

}  // namespace Gdiplus::DllExports
