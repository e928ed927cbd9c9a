#include "winhost/gdi/bitmap.h"

#include "winhost/machine/faults.h"

namespace winhost {
namespace {

HBITMAP Enter(std::shared_ptr<Surface> surface, bool is_section) {
  if (!surface) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
  }
  return static_cast<HBITMAP>(EnterObject(std::make_shared<Bitmap>(std::move(surface), is_section)));
}

bool Usable(const BITMAPINFOHEADER& header) {
  constexpr LONG kMostSide = 0x7FFF;
  return header.biSize >= sizeof(BITMAPINFOHEADER) && header.biPlanes == 1 && header.biBitCount == 32 &&
         header.biCompression == BI_RGB && header.biWidth > 0 && header.biWidth <= kMostSide && header.biHeight != 0 &&
         header.biHeight >= -kMostSide && header.biHeight <= kMostSide;
}

}  // namespace

HBITMAP InitialBitmap() {
  static void* const handle = EnterObject(std::make_shared<Bitmap>(Surface::Make(1, 1), false), true);
  return static_cast<HBITMAP>(handle);
}

}  // namespace winhost

HBITMAP CreateDIBSection(HDC, const BITMAPINFO* info, UINT usage, LPVOID* bits, HANDLE section, DWORD) {
  if (bits) *bits = nullptr;
  if (const auto error = winhost::PlannedFault("CreateDIBSection")) {
    SetLastError(*error);
    return nullptr;
  }
  if (!info || usage != DIB_RGB_COLORS || section || !winhost::Usable(info->bmiHeader)) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return nullptr;
  }
  const LONG height = info->bmiHeader.biHeight;
  auto surface = winhost::Surface::Make(info->bmiHeader.biWidth, height < 0 ? -height : height, height > 0);
  const auto pixels = surface ? surface->pixels() : winhost::PixelBuffer{};
  const HBITMAP bitmap = winhost::Enter(std::move(surface), true);
  if (bitmap && bits) *bits = height < 0 ? pixels.bits : pixels.bits + (height - 1) * std::ptrdiff_t{pixels.stride};
  return bitmap;
}
