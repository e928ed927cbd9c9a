// UpdateLayeredWindow: place, size, picture and transparency of a window at one stroke.
#include <windows.h>

#include <cstring>

#include "winhost/gdi/device_context.h"
#include "winhost/gdi/window_drawing.h"
#include "winhost/kernel/waitable.h"
#include "winhost/machine/faults.h"
#include "winhost/window/display.h"

namespace winhost {
namespace {

BOOL Fail(DWORD error) {
  SetLastError(error);
  return FALSE;
}

bool Move(HWND window, const POINT* position, const SIZE* size) {
  UINT flags = SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW;
  if (!position) flags |= SWP_NOMOVE;
  if (!size) flags |= SWP_NOSIZE;
  if (!position && !size) return true;
  return SetWindowPos(window, nullptr, position ? position->x : 0, position ? position->y : 0, size ? size->cx : 0,
                      size ? size->cy : 0, flags) != FALSE;
}

// The whole picture comes from the source; what lies outside of that is transparent.
std::shared_ptr<Picture> Copy(const PixelBuffer& source, POINT from, SIZE size) {
  auto picture = MakePicture(size.cx, size.cy);
  const RECT wanted{from.x, from.y, from.x + picture->width, from.y + picture->height};
  const RECT there{0, 0, source.width, source.height};
  RECT part;
  if (!IntersectRect(&part, &wanted, &there)) return picture;
  for (int y = part.top; y < part.bottom; ++y) {
    const std::uint8_t* row = source.bits + static_cast<std::ptrdiff_t>(y) * source.stride + part.left * 4;
    std::memcpy(picture->At(part.left - from.x, y - from.y), row, static_cast<std::size_t>(part.right - part.left) * 4);
  }
  return picture;
}

Layer LayerFor(const BLENDFUNCTION* blend, DWORD flags) {
  if (!(flags & ULW_ALPHA) || !blend) return {255, false};
  return {blend->SourceConstantAlpha, (blend->AlphaFormat & AC_SRC_ALPHA) != 0};
}

SIZE SizeOf(HWND window) {
  RECT frame{};
  GetWindowRect(window, &frame);
  return {frame.right - frame.left, frame.bottom - frame.top};
}

}  // namespace
}  // namespace winhost

using namespace winhost;

BOOL UpdateLayeredWindow(HWND handle, HDC, POINT* position, SIZE* size, HDC source, POINT* from, COLORREF,
                         BLENDFUNCTION* blend, DWORD flags) {
  const auto window = MyWindow(handle);
  if (!window) return FALSE;
  if (const auto error = PlannedFault("UpdateLayeredWindow", window->window_class->name)) return Fail(*error);
  if (!(GetWindowLongW(handle, GWL_EXSTYLE) & WS_EX_LAYERED) || (flags & ULW_COLORKEY)) {
    return Fail(ERROR_INVALID_PARAMETER);
  }
  std::optional<PixelBuffer> pixels;
  if (source) {
    pixels = DcPixels(source);
    if (!pixels || !from || (size && (size->cx <= 0 || size->cy <= 0))) return Fail(ERROR_INVALID_PARAMETER);
  }
  if (!Move(handle, position, size)) return FALSE;
  const SIZE whole = SizeOf(handle);
  const auto start = pixels ? DcToDevice(source, *from) : std::nullopt;
  const auto picture = pixels ? Copy(*pixels, start.value_or(*from), whole) : nullptr;
  {
    std::scoped_lock lock(WaitLock());
    if (picture) window->picture = picture;
    window->layer = LayerFor(blend, flags);
  }
  Present(*window, {0, 0, whole.cx, whole.cy});
  return TRUE;
}
