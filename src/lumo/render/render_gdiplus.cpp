#include "lumo/render/render_gdiplus.h"

#include <string.h>

#include "lumo/render/rect_math.h"

// The surface: bitmap, pixels, state of the context, copies. Shapes, pictures and texts are in files of their own.

namespace lumo {
namespace {

constexpr LONGLONG kMostPixels = 1 << 28;

HBITMAP MakeBitmap(int width, int height, bool top_down, BYTE** bits) {
  BITMAPINFO info;
  memset(&info, 0, sizeof info);
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = top_down ? -height : height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  void* pixels = nullptr;
  const HBITMAP bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
  *bits = bitmap ? static_cast<BYTE*>(pixels) : nullptr;
  return bitmap;
}

}  // namespace

std::unique_ptr<IRender> MakeRender() { return std::make_unique<RenderGdiplus>(); }

// A font that GDI+ can use too is what remains when a text's own font cannot be made.
RenderGdiplus::RenderGdiplus() : dc_(CreateCompatibleDC(nullptr)) {
  SelectObject(dc_.Get(), GetStockObject(DEFAULT_GUI_FONT));
}

RenderGdiplus::~RenderGdiplus() {
  if (const HBITMAP bitmap = DetachBitmap()) DeleteObject(bitmap);
}

bool RenderGdiplus::Resize(int width, int height, bool top_down) {
  if (width < 1 || height < 1 || LONGLONG{width} * height > kMostPixels) width = height = 0;
  if (width == width_ && height == height_) return false;
  if (const HBITMAP old = DetachBitmap()) DeleteObject(old);
  if (width == 0) return true;
  bitmap_ = MakeBitmap(width, height, top_down, &bits_);
  if (!bitmap_) return true;
  previous_ = SelectObject(dc_.Get(), bitmap_);
  width_ = width;
  height_ = height;
  top_down_ = top_down;
  return true;
}

void RenderGdiplus::Clear() {
  GdiFlush();
  if (bits_) memset(bits_, 0, static_cast<size_t>(width_) * static_cast<size_t>(height_) * 4);
}

std::unique_ptr<IRender> RenderGdiplus::Clone() {
  auto copy = std::make_unique<RenderGdiplus>();
  copy->Resize(width_, height_, top_down_);
  const POINT origin = SetOrigin(0, 0);
  const RECT all = {0, 0, width_, height_};
  copy->BitBlt(all, dc_.Get(), all, SRCCOPY);
  SetOrigin(origin.x, origin.y);
  return copy;
}

HBITMAP RenderGdiplus::DetachBitmap() {
  if (!bitmap_) return nullptr;
  SelectObject(dc_.Get(), previous_);
  const HBITMAP bitmap = bitmap_;
  bitmap_ = nullptr;
  bits_ = nullptr;
  width_ = height_ = 0;
  return bitmap;
}

BYTE* RenderGdiplus::Row(int y) const {
  const int line = top_down_ ? y : height_ - 1 - y;
  return bits_ + static_cast<size_t>(line) * static_cast<size_t>(width_) * 4;
}

void RenderGdiplus::FillPixels(const RECT& rect, BYTE value) {
  GdiFlush();
  const RECT part = CommonPart(rect, {0, 0, width_, height_});
  if (IsEmpty(part)) return;
  const auto bytes = static_cast<size_t>(part.right - part.left) * 4;
  for (int y = part.top; y < part.bottom; ++y) memset(Row(y) + static_cast<size_t>(part.left) * 4, value, bytes);
}

template <class Change>
void RenderGdiplus::ForPixelsOutsideCorners(const RECT& rect, const RECT& corners, Change change) {
  GdiFlush();
  const RECT part = CommonPart(rect, {0, 0, width_, height_});
  for (int y = part.top; y < part.bottom; ++y) {
    const bool top = y < corners.top, bottom = y >= Difference(height_, corners.bottom);
    BYTE* const row = Row(y);
    for (int x = part.left; x < part.right; ++x) {
      const bool in_left = (top || bottom) && x < corners.left;
      const bool in_right = (top || bottom) && x >= Difference(width_, corners.right);
      if (!in_left && !in_right) change(row[static_cast<size_t>(x) * 4 + 3]);
    }
  }
}

void RenderGdiplus::SetOpaqueExceptCorners(const RECT& rect, const RECT& corners) {
  ForPixelsOutsideCorners(rect, corners, [](BYTE& alpha) { alpha = 255; });
}

void RenderGdiplus::ClearAlphaExceptCorners(const RECT& rect, const RECT& corners, BYTE alpha) {
  if (alpha == 0) return;
  ForPixelsOutsideCorners(rect, corners, [alpha](BYTE& pixel) {
    if (pixel == alpha) pixel = 0;
  });
}

bool RenderGdiplus::SaveState() {
  const int token = SaveDC(dc_.Get());
  if (token) saved_.push_back(token);
  return token != 0;
}

void RenderGdiplus::RestoreState() {
  if (saved_.empty()) return;
  RestoreDC(dc_.Get(), saved_.back());
  saved_.pop_back();
}

POINT RenderGdiplus::OffsetOrigin(int dx, int dy) {
  POINT old = {};
  OffsetWindowOrgEx(dc_.Get(), dx, dy, &old);
  return old;
}

POINT RenderGdiplus::SetOrigin(int x, int y) {
  POINT old = {};
  SetWindowOrgEx(dc_.Get(), x, y, &old);
  return old;
}

POINT RenderGdiplus::GetOrigin() {
  POINT origin = {};
  GetWindowOrgEx(dc_.Get(), &origin);
  return origin;
}

bool RenderGdiplus::BitBlt(const RECT& dest, HDC source, const RECT& from, DWORD raster_op) {
  return ::BitBlt(dc_.Get(), dest.left, dest.top, WidthOf(dest), HeightOf(dest), source, from.left, from.top,
                  raster_op) != FALSE;
}

bool RenderGdiplus::StretchBlt(const RECT& dest, HDC source, const RECT& from, DWORD raster_op) {
  SetStretchBltMode(dc_.Get(), HALFTONE);
  return ::StretchBlt(dc_.Get(), dest.left, dest.top, WidthOf(dest), HeightOf(dest), source, from.left, from.top,
                      WidthOf(from), HeightOf(from), raster_op) != FALSE;
}

bool RenderGdiplus::AlphaBlend(const RECT& dest, HDC source, const RECT& from, BYTE alpha) {
  const BLENDFUNCTION blend = {AC_SRC_OVER, 0, alpha, AC_SRC_ALPHA};
  return ::AlphaBlend(dc_.Get(), dest.left, dest.top, WidthOf(dest), HeightOf(dest), source, from.left, from.top,
                      WidthOf(from), HeightOf(from), blend) != FALSE;
}

}  // namespace lumo
