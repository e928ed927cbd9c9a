// Device contexts of windows: GetDC, BeginPaint and what ends them.
#include <windows.h>

#include <map>

#include "winhost/gdi/device_context.h"
#include "winhost/gdi/window_drawing.h"
#include "winhost/kernel/waitable.h"
#include "winhost/machine/faults.h"
#include "winhost/window/display.h"
#include "winhost/window/geometry.h"
#include "winhost/window/update.h"

namespace winhost {
namespace {

[[maybe_unused]] const bool g_registered = RegisterWindowDrawing();

struct OpenDc {
  std::weak_ptr<Window> window;
  RECT touched{};  // what may be drawn into, in window coordinates
};

// Guarded by WaitLock.
std::map<HDC, OpenDc>& OpenDcs() {
  static auto* dcs = new std::map<HDC, OpenDc>;
  return *dcs;
}

std::shared_ptr<Picture> PictureFor(Window& window, const WindowInfo& info) {
  std::scoped_lock lock(WaitLock());
  window.picture = FitPicture(window.picture, info.place.right - info.place.left, info.place.bottom - info.place.top);
  return window.picture;
}

// A context over this part of the window's picture; `part` in window coordinates.
HDC Open(const std::shared_ptr<Window>& window, const RECT& part) {
  const auto info = window->table->Find(window->handle);
  if (!info) return nullptr;
  const auto picture = PictureFor(*window, *info);
  const RECT all{0, 0, picture->width, picture->height};
  RECT inside{};
  IntersectRect(&inside, &part, &all);
  PixelBuffer pixels;
  if (!IsRectEmpty(&inside)) {
    pixels = {picture->At(inside.left, inside.top), inside.right - inside.left, inside.bottom - inside.top,
              picture->width * 4};
  }
  const HDC context = MakePixelDc(pixels, picture);
  if (!context) return nullptr;
  std::scoped_lock lock(WaitLock());
  OpenDcs()[context] = {window, inside};
  return context;
}

bool Close(HDC context) {
  OpenDc open;
  {
    std::scoped_lock lock(WaitLock());
    const auto found = OpenDcs().find(context);
    if (found == OpenDcs().end()) return EndPixelDc(context);
    open = found->second;
    OpenDcs().erase(found);
  }
  EndPixelDc(context);
  if (const auto window = open.window.lock()) Present(*window, open.touched);
  return true;
}

HDC OpenFor(HWND handle, bool whole) {
  if (!handle || handle == GetDesktopWindow()) return MakeScreenDc(Display::Current().Size());
  const auto window = FindLocalWindow(handle);
  const auto info = WindowTable::Current()->Find(handle);
  if (!window || !info) {
    SetLastError(info ? ERROR_ACCESS_DENIED : ERROR_INVALID_WINDOW_HANDLE);
    return nullptr;
  }
  const RECT frame{0, 0, info->place.right - info->place.left, info->place.bottom - info->place.top};
  return Open(window, whole ? frame : info->client);
}

// What was to be painted, and the part of the picture that it covers.
void Narrow(HDC context, const Window& window, const RectSet& update) {
  SetVisibleRegion(context, update.rects());
  const auto info = window.table->Find(window.handle);
  if (!info) return;
  RECT touched = update.Bounds();
  OffsetRect(&touched, info->client.left, info->client.top);
  std::scoped_lock lock(WaitLock());
  OpenDcs()[context].touched = touched;
}

}  // namespace
}  // namespace winhost

using namespace winhost;

HDC GetDC(HWND window) { return OpenFor(window, false); }
HDC GetWindowDC(HWND window) { return OpenFor(window, true); }
int ReleaseDC(HWND, HDC context) { return Close(context) ? 1 : 0; }

HDC BeginPaint(HWND handle, LPPAINTSTRUCT paint) {
  const auto window = MyWindow(handle);
  if (!window || !paint) return nullptr;
  *paint = PAINTSTRUCT{};
  if (const auto error = PlannedFault("BeginPaint", window->window_class->name)) {
    SetLastError(*error);
    return nullptr;
  }
  const TakenUpdate taken = TakeUpdate(*window);
  const HDC context = OpenFor(handle, false);
  if (!context) return nullptr;
  Narrow(context, *window, taken.region);
  paint->hdc = context;
  paint->rcPaint = taken.region.Bounds();
  if (taken.erase && !taken.region.Empty()) {
    paint->fErase = SendMessageW(handle, WM_ERASEBKGND, reinterpret_cast<WPARAM>(context), 0) == 0;
  }
  return context;
}

BOOL EndPaint(HWND, const PAINTSTRUCT* paint) { return paint && Close(paint->hdc); }
