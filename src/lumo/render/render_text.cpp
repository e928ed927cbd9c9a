#include <limits.h>
#include <string.h>

#include "lumo/core/global_resources.h"
#include "lumo/core/screen_dc.h"
#include "lumo/render/rect_math.h"
#include "lumo/render/render_gdiplus.h"
#include "lumo/render/text_style.h"

// Texts: with GDI+, or with GDI where a control asks for it.

namespace lumo {
namespace {

using Gdiplus::GpRectF;

// Any two Chinese characters: their height is the height of a line.
constexpr const WCHAR* kLineSample = TEXT("\x6d4b\x8bd5");

// Selects an object for as long as the owner lives.
class Selected {
 public:
  Selected(HDC dc, HGDIOBJ object) : dc_(dc), previous_(object ? SelectObject(dc, object) : nullptr) {}
  ~Selected() {
    if (previous_) SelectObject(dc_, previous_);
  }
  Selected(const Selected&) = delete;
  Selected& operator=(const Selected&) = delete;

 private:
  HDC dc_;
  HGDIOBJ previous_;
};

GpRectF AreaOf(const RECT& rect) {
  return {static_cast<float>(rect.left), static_cast<float>(rect.top), static_cast<float>(WidthOf(rect)),
          static_cast<float>(HeightOf(rect))};
}

// Smooth in all directions and without colour fringes, which would spoil the alpha of what they are drawn on.
UniqueGraphics MakeTextGraphics(HDC dc) {
  UniqueGraphics graphics = MakeGraphics(dc, true);
  if (graphics) Record(gdip::GdipSetTextRenderingHint(graphics.Get(), Gdiplus::TextRenderingHintAntiAlias));
  return graphics;
}

GpRectF Measure(Gdiplus::GpGraphics* graphics, StringView text, const Gdiplus::GpFont* font,
                const Gdiplus::GpStringFormat* format, const GpRectF& box) {
  GpRectF bounds;
  Record(gdip::GdipMeasureString(graphics, text.data(), static_cast<INT>(text.size()), font, &box, format, &bounds,
                                 nullptr, nullptr));
  return bounds;
}

RECT MeasureWithGdi(StringView text, const TextLook& look, int width_limit) {
  const ScreenDc screen;
  const Selected font(screen.Get(), GetFont(look.font, look.scale));
  RECT rect = {0, 0, width_limit > 0 ? width_limit : INT_MAX, INT_MAX};
  DrawTextW(screen.Get(), text.data(), static_cast<int>(text.size()), &rect, look.style | DT_CALCRECT);
  return rect;
}

// White on black becomes coverage: the colour, weighted and with it as alpha.
void ColorByCoverage(BYTE* pixels, size_t count, DWORD color) {
  const DWORD red = (color >> 16) & 0xFF, green = (color >> 8) & 0xFF, blue = color & 0xFF;
  for (BYTE* pixel = pixels; count; --count, pixel += 4) {
    const BYTE coverage = pixel[0];
    pixel[0] = static_cast<BYTE>(blue * coverage / 256);
    pixel[1] = static_cast<BYTE>(green * coverage / 256);
    pixel[2] = static_cast<BYTE>(red * coverage / 256);
    pixel[3] = coverage;
  }
}

void DrawWithGdi(IRender& target, const RECT& rect, StringView text, const TextLook& look) {
  RenderGdiplus sheet;
  const RECT area = {0, 0, WidthOf(rect), HeightOf(rect)};
  sheet.Resize(area.right, area.bottom, true);
  if (!sheet.GetBits()) return;
  {
    const Selected font(sheet.GetDC(), GetFont(look.font, look.scale));
    SetTextColor(sheet.GetDC(), RGB(255, 255, 255));
    SetBkColor(sheet.GetDC(), RGB(0, 0, 0));
    SetBkMode(sheet.GetDC(), OPAQUE);
    RECT box = area;
    DrawTextW(sheet.GetDC(), text.data(), static_cast<int>(text.size()), &box, look.style | DT_NOCLIP);
  }
  GdiFlush();
  ColorByCoverage(sheet.GetBits(), static_cast<size_t>(area.right) * static_cast<size_t>(area.bottom), look.color);
  target.AlphaBlend(rect, sheet.GetDC(), area, static_cast<BYTE>(look.color >> 24));
}

}  // namespace

void RenderGdiplus::DrawText(const RECT& rect, StringView text, const TextLook& look) {
  if (text.empty()) return;
  if (look.gdi) return DrawWithGdi(*this, rect, text, look);
  const UniqueGraphics graphics = MakeTextGraphics(dc_.Get());
  const Gdiplus::GpFont* const font = FontFor(dc_.Get(), GetFont(look.font, look.scale));
  const UniqueGpBrush brush = MakeSolidBrush(TextColor(look.color, look.alpha));
  if (!graphics || !font) return;
  const GpRectF area = AreaOf(rect);
  Record(gdip::GdipDrawString(graphics.Get(), text.data(), static_cast<INT>(text.size()), font, &area,
                              FormatFor(StyleOf(look.style, look.line_limit)), brush.Get()));
}

RECT RenderGdiplus::MeasureText(StringView text, const TextLook& look, int width_limit) {
  if (look.gdi) return MeasureWithGdi(text, look, width_limit);
  const bool single_line = (look.style & DT_SINGLELINE) != 0;
  const UniqueGraphics graphics = MakeTextGraphics(dc_.Get());
  const Gdiplus::GpFont* const font = FontFor(dc_.Get(), GetFont(look.font, look.scale));
  if (!graphics || !font) return {};
  const Gdiplus::GpStringFormat* const format = FormatFor(StyleOf(look.style & DT_SINGLELINE, false));
  GpRectF box(0, 0, 0, 0);
  if (width_limit != -1) {
    if (single_line) box.Height = Measure(graphics.Get(), kLineSample, font, format, box).Height;
    box.Width = static_cast<float>(width_limit);
  }
  const GpRectF bounds = Measure(graphics.Get(), text, font, format, box);
  return {static_cast<LONG>(bounds.X), static_cast<LONG>(bounds.Y), static_cast<LONG>(bounds.X + bounds.Width + 1),
          static_cast<LONG>(bounds.Y + bounds.Height + 1)};
}

}  // namespace lumo
