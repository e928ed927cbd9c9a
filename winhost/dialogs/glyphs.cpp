#include "winhost/dialogs/glyphs.h"

#include <numbers>

#include "winhost/gdi/canvas.h"

namespace winhost {
namespace {

constexpr COLORREF kFolderBack = RGB(226, 168, 42), kFolderFront = RGB(255, 213, 98), kFolderEdge = RGB(255, 231, 158);
constexpr COLORREF kMetal = RGB(122, 133, 145), kMetalLight = RGB(190, 198, 207), kScreen = RGB(52, 136, 214);
constexpr COLORREF kLamp = RGB(64, 176, 92);

void Use(cairo_t* c, COLORREF color) {
  cairo_set_source_rgb(c, GetRValue(color) / 255.0, GetGValue(color) / 255.0, GetBValue(color) / 255.0);
}

void Box(cairo_t* c, double x, double y, double width, double height, double radius, COLORREF color) {
  constexpr double kQuarter = std::numbers::pi / 2;
  const double right = x + width - radius, bottom = y + height - radius;
  cairo_new_sub_path(c);
  cairo_arc(c, right, y + radius, radius, -kQuarter, 0);
  cairo_arc(c, right, bottom, radius, 0, kQuarter);
  cairo_arc(c, x + radius, bottom, radius, kQuarter, 2 * kQuarter);
  cairo_arc(c, x + radius, y + radius, radius, 2 * kQuarter, 3 * kQuarter);
  cairo_close_path(c);
  Use(c, color);
  cairo_fill(c);
}

void Disk(cairo_t* c, double x, double y, double radius, COLORREF color) {
  cairo_new_sub_path(c);
  cairo_arc(c, x, y, radius, 0, 2 * std::numbers::pi);
  Use(c, color);
  cairo_fill(c);
}

void Folder(cairo_t* c) {
  Box(c, 1, 2.5, 7, 5, 1.2, kFolderBack);
  Box(c, 1, 4, 14, 9, 1.2, kFolderBack);
  Box(c, 1, 5.5, 14, 8, 1.2, kFolderFront);
  Box(c, 1.6, 5.5, 12.8, 0.8, 0.4, kFolderEdge);
}

void Drive(cairo_t* c, COLORREF lamp) {
  Box(c, 1, 5, 14, 7, 1.2, kMetal);
  Box(c, 1.8, 5.8, 12.4, 3.4, 0.8, kMetalLight);
  Disk(c, 12.6, 10.6, 0.8, lamp);
}

void Disc(cairo_t* c) {
  Disk(c, 8, 8, 6.5, kMetal);
  Disk(c, 8, 8, 5.8, kMetalLight);
  Disk(c, 8, 8, 2.2, kMetal);
  Disk(c, 8, 8, 1.1, RGB(255, 255, 255));
}

void Computer(cairo_t* c) {
  Box(c, 1, 2.5, 14, 9, 1, kMetal);
  Box(c, 2, 3.5, 12, 7, 0.4, kScreen);
  Box(c, 7, 11.5, 2, 1.5, 0.2, kMetal);
  Box(c, 4.5, 12.8, 7, 1, 0.4, kMetal);
}

void Network(cairo_t* c) {
  Drive(c, kLamp);
  Box(c, 7.3, 12, 1.4, 1.8, 0.2, kScreen);
  Box(c, 3, 13.4, 10, 1.2, 0.5, kScreen);
}

void Lines(cairo_t* c, COLORREF color, std::initializer_list<std::pair<POINT, POINT>> lines) {
  constexpr double kMiddle = 0.5;  // of a unit, which at the smallest scale is a pixel
  Use(c, color);
  cairo_set_line_cap(c, CAIRO_LINE_CAP_ROUND);
  cairo_set_line_width(c, 1.2);
  for (const auto& [from, to] : lines) {
    cairo_move_to(c, from.x + kMiddle, from.y + kMiddle);
    cairo_line_to(c, to.x + kMiddle, to.y + kMiddle);
  }
  cairo_stroke(c);
}

void Draw(cairo_t* c, Glyph glyph, COLORREF line) {
  switch (glyph) {
    case Glyph::Folder:
      return Folder(c);
    case Glyph::Drive:
      return Drive(c, kLamp);
    case Glyph::Removable:
      return Drive(c, kScreen);
    case Glyph::Disc:
      return Disc(c);
    case Glyph::Network:
      return Network(c);
    case Glyph::Computer:
      return Computer(c);
    case Glyph::Up:
      return Lines(c, line, {{{8, 13}, {8, 3}}, {{8, 3}, {4, 7}}, {{8, 3}, {12, 7}}});
    case Glyph::Close:
      return Lines(c, line, {{{4, 4}, {11, 11}}, {{11, 4}, {4, 11}}});
  }
}

}  // namespace

void DrawGlyph(HDC context, Glyph glyph, const RECT& box, COLORREF ink) {
  constexpr double kUnits = 16;
  const auto dc = FindDc(context);
  if (!dc || !dc->Pixels()) return;
  const CairoContext canvas = OpenCanvas(*dc);
  if (!canvas) return;
  cairo_translate(canvas.get(), box.left, box.top);
  cairo_scale(canvas.get(), (box.right - box.left) / kUnits, (box.bottom - box.top) / kUnits);
  Draw(canvas.get(), glyph, ink);
}

}  // namespace winhost
