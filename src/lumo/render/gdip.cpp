#include "lumo/render/gdip.h"

namespace lumo {
namespace {

constinit Gdiplus::GpStatus last_failure = Gdiplus::Ok;

}  // namespace

void Record(Gdiplus::GpStatus status) {
  if (status != Gdiplus::Ok) last_failure = status;
}

Gdiplus::GpStatus LastGdipFailure() { return last_failure; }

UniqueGraphics MakeGraphics(HDC dc, bool half_pixels) {
  UniqueGraphics graphics;
  Record(gdip::GdipCreateFromHDC(dc, graphics.Put()));
  if (!graphics) return graphics;
  Record(gdip::GdipSetSmoothingMode(graphics.Get(), Gdiplus::SmoothingModeAntiAlias));
  if (half_pixels) Record(gdip::GdipSetPixelOffsetMode(graphics.Get(), Gdiplus::PixelOffsetModeHalf));
  return graphics;
}

UniqueGpBrush MakeSolidBrush(DWORD argb) {
  Gdiplus::GpSolidFill* brush = nullptr;
  Record(gdip::GdipCreateSolidFill(argb, &brush));
  return UniqueGpBrush(brush);
}

UniqueGpBrush MakeGradientBrush(const RECT& rect, DWORD from, DWORD to, int mode) {
  const Gdiplus::GpRectF area(static_cast<float>(rect.left), static_cast<float>(rect.top),
                              static_cast<float>(rect.right) - static_cast<float>(rect.left),
                              static_cast<float>(rect.bottom) - static_cast<float>(rect.top));
  Gdiplus::GpLineGradient* brush = nullptr;
  Record(gdip::GdipCreateLineBrushFromRect(&area, from, to, static_cast<Gdiplus::LinearGradientMode>(mode),
                                           Gdiplus::WrapModeTile, &brush));
  return UniqueGpBrush(brush);
}

UniqueGpPen MakePen(DWORD argb, float width) {
  UniqueGpPen pen;
  Record(gdip::GdipCreatePen1(argb, width, Gdiplus::UnitPixel, pen.Put()));
  return pen;
}

}  // namespace lumo
