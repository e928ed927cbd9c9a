// The shapes of windows, and how layered ones lie over what is behind them.
#include <windows.h>

#include "winhost/kernel/waitable.h"
#include "winhost/window/display.h"
#include "winhost/window/drawing.h"
#include "winhost/window/geometry.h"
#include "winhost/window/window.h"

using namespace winhost;

namespace {

constexpr int kRegionError = 0, kSimpleRegion = 2, kComplexRegion = 3;

int Fail(DWORD error) {
  SetLastError(error);
  return 0;
}

void TellChanged(HWND window) {
  const auto info = WindowTable::Current()->Find(window);
  if (info) Display::Current().Changed(TopOf(*info).window);
}

}  // namespace

int SetWindowRgn(HWND handle, HRGN region, BOOL redraw) {
  const auto window = MyWindow(handle);
  if (!window) return 0;
  std::optional<RectSet> shape;
  if (region) {
    const auto rects = TheDrawing().region_rects ? TheDrawing().region_rects(region) : std::nullopt;
    if (!rects) return Fail(ERROR_INVALID_HANDLE);
    shape = RectSet::Of(*rects);
    TheDrawing().delete_region(region);
  }
  {
    std::scoped_lock lock(WaitLock());
    window->shape = std::move(shape);
  }
  if (redraw) InvalidateRect(handle, nullptr, TRUE);
  TellChanged(handle);
  return 1;
}

int GetWindowRgn(HWND handle, HRGN region) {
  const auto window = FindLocalWindow(handle);
  if (!window) return Fail(ERROR_INVALID_WINDOW_HANDLE);
  std::vector<RECT> rects;
  {
    std::scoped_lock lock(WaitLock());
    if (!window->shape) return kRegionError;
    rects = window->shape->rects();
  }
  if (!TheDrawing().fill_region || !TheDrawing().fill_region(region, rects)) return Fail(ERROR_INVALID_HANDLE);
  return rects.size() > 1 ? kComplexRegion : kSimpleRegion;
}

BOOL SetLayeredWindowAttributes(HWND handle, COLORREF, BYTE alpha, DWORD flags) {
  const auto window = MyWindow(handle);
  if (!window) return FALSE;
  const auto info = window->table->Find(handle);
  if (!info || !(info->ex_style & WS_EX_LAYERED) || (flags & LWA_COLORKEY)) return Fail(ERROR_INVALID_PARAMETER);
  {
    std::scoped_lock lock(WaitLock());
    window->layer = {flags & LWA_ALPHA ? alpha : BYTE{255}, false};
  }
  TellChanged(handle);
  return TRUE;
}
