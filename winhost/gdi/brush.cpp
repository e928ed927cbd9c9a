#include "winhost/gdi/brush.h"

#include <array>

#include "winhost/gdi/dc.h"
#include "winhost/gdi/pixels.h"

namespace winhost {
namespace {

HBRUSH EnterStock(COLORREF color, bool hollow) {
  return static_cast<HBRUSH>(EnterObject(std::make_shared<SolidBrush>(color, hollow), true));
}

// The colour of a brush or of a system colour's number plus one; none where nothing is to be painted.
std::optional<COLORREF> ColorOf(HBRUSH handle) {
  constexpr std::uintptr_t kSystemColors = 32;
  const auto number = reinterpret_cast<std::uintptr_t>(handle);
  if (number >= 1 && number <= kSystemColors) return GetSysColor(static_cast<int>(number - 1));
  const auto brush = GdiObjectAs<SolidBrush>(handle);
  return brush && !brush->hollow ? std::optional(brush->color) : std::nullopt;
}

}  // namespace

HBRUSH StockBrush(int index) {
  static const HBRUSH white = EnterStock(RGB(255, 255, 255), false);
  static const HBRUSH black = EnterStock(RGB(0, 0, 0), false);
  static const HBRUSH none = EnterStock(RGB(255, 255, 255), true);
  if (index == WHITE_BRUSH) return white;
  if (index == BLACK_BRUSH) return black;
  return index == NULL_BRUSH ? none : nullptr;
}

}  // namespace winhost

HBRUSH GetSysColorBrush(int index) {
  constexpr int kColors = 31;
  static std::array<HBRUSH, kColors> brushes{};
  if (index < 0 || index >= kColors) return nullptr;
  HBRUSH& brush = brushes[static_cast<std::size_t>(index)];
  if (!brush) brush = winhost::EnterStock(GetSysColor(index), false);
  return brush;
}

HBRUSH CreateSolidBrush(COLORREF color) {
  return static_cast<HBRUSH>(winhost::EnterObject(std::make_shared<winhost::SolidBrush>(color, false)));
}

int FillRect(HDC handle, const RECT* rect, HBRUSH brush) {
  const auto dc = winhost::FindDc(handle);
  if (!dc || !rect) return 0;
  const auto color = winhost::ColorOf(brush);
  if (!color || !dc->Pixels()) return winhost::FindGraphicsObject(brush) ? 1 : 0;
  winhost::Region region(dc->ToDevice(*rect));
  region.Combine(dc->Drawable(), RGN_AND);
  winhost::FillPixels(*dc->Pixels(), region, winhost::GdiPixel(*color));
  return 1;
}

int FrameRect(HDC dc, const RECT* rect, HBRUSH brush) {
  if (!rect || rect->left >= rect->right || rect->top >= rect->bottom) return 0;
  const RECT edges[] = {{rect->left, rect->top, rect->right, rect->top + 1},
                        {rect->left, rect->bottom - 1, rect->right, rect->bottom},
                        {rect->left, rect->top, rect->left + 1, rect->bottom},
                        {rect->right - 1, rect->top, rect->right, rect->bottom}};
  int drawn = 1;
  for (const RECT& edge : edges) drawn &= FillRect(dc, &edge, brush);
  return drawn;
}
