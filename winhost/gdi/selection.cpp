// Objects that are selected, looked at and deleted, whatever their kind.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "winhost/gdi/dc.h"

namespace winhost {
namespace {

HGDIOBJ SelectFont(DeviceContext& dc, std::shared_ptr<Font> font, HGDIOBJ handle) {
  dc.state.font_object = std::move(font);
  return std::exchange(dc.state.font, static_cast<HFONT>(handle));
}

HGDIOBJ SelectBrush(DeviceContext& dc, std::shared_ptr<SolidBrush> brush, HGDIOBJ handle) {
  dc.state.brush_object = std::move(brush);
  return std::exchange(dc.state.brush, static_cast<HBRUSH>(handle));
}

int Give(const void* value, std::size_t size, int bytes, LPVOID buffer) {
  if (!buffer) return static_cast<int>(size);
  if (bytes < 0) return 0;
  const std::size_t given = std::min(size, static_cast<std::size_t>(bytes));
  std::memcpy(buffer, value, given);
  return static_cast<int>(given);
}

DIBSECTION Describe(const Bitmap& bitmap) {
  const PixelBuffer& pixels = bitmap.surface->pixels();
  const int stride = std::abs(pixels.stride);
  DIBSECTION section{};
  section.dsBm = {0, pixels.width, pixels.height, stride, 1, 32, nullptr};
  if (bitmap.is_section) {
    section.dsBm.bmBits =
        pixels.stride > 0 ? pixels.bits : pixels.bits + (pixels.height - 1) * std::ptrdiff_t{pixels.stride};
  }
  section.dsBmih.biSize = sizeof(BITMAPINFOHEADER);
  section.dsBmih.biWidth = pixels.width;
  section.dsBmih.biHeight = pixels.stride > 0 ? -pixels.height : pixels.height;
  section.dsBmih.biPlanes = 1;
  section.dsBmih.biBitCount = 32;
  section.dsBmih.biSizeImage = static_cast<DWORD>(stride) * static_cast<DWORD>(pixels.height);
  return section;
}

int GiveBitmap(const Bitmap& bitmap, int bytes, LPVOID buffer) {
  const DIBSECTION section = Describe(bitmap);
  const bool whole = bitmap.is_section && buffer && bytes >= static_cast<int>(sizeof section);
  return whole ? Give(&section, sizeof section, bytes, buffer)
               : Give(&section.dsBm, sizeof section.dsBm, bytes, buffer);
}

}  // namespace
}  // namespace winhost

HGDIOBJ SelectObject(HDC handle, HGDIOBJ object) {
  const auto dc = winhost::FindDc(handle);
  if (!dc) return nullptr;
  if (auto font = winhost::GraphicsObjectAs<winhost::Font>(object))
    return winhost::SelectFont(*dc, std::move(font), object);
  if (auto brush = winhost::GraphicsObjectAs<winhost::SolidBrush>(object)) {
    return winhost::SelectBrush(*dc, std::move(brush), object);
  }
  return winhost::SelectBitmap(*dc, static_cast<HBITMAP>(object));
}

HGDIOBJ GetStockObject(int index) {
  switch (index) {
    case SYSTEM_FONT:
    case DEFAULT_GUI_FONT:
      return winhost::StockGuiFont();
    default:
      return winhost::StockBrush(index);
  }
}

int GetObjectW(HANDLE object, int bytes, LPVOID buffer) {
  if (const auto bitmap = winhost::GraphicsObjectAs<winhost::Bitmap>(object)) {
    return winhost::GiveBitmap(*bitmap, bytes, buffer);
  }
  const auto font = winhost::GdiObjectAs<winhost::Font>(object);
  return font ? winhost::Give(&font->logfont, sizeof font->logfont, bytes, buffer) : 0;
}

BOOL DeleteObject(HGDIOBJ object) {
  const auto found = winhost::FindGraphicsObject(object);
  if (!found || found->kind() > winhost::ObjectKind::Region) {
    SetLastError(ERROR_INVALID_HANDLE);
    return FALSE;
  }
  if (winhost::IsPermanentObject(object)) return TRUE;  // stock objects stay, and that is no failure
  if (found->kind() == winhost::ObjectKind::DeviceContext) return DeleteDC(static_cast<HDC>(object));
  if (found->kind() == winhost::ObjectKind::Bitmap && static_cast<const winhost::Bitmap&>(*found).selections > 0) {
    return FALSE;
  }
  return winhost::RemoveObject(object);
}
