// The calls about pointer, capture and cursor place.
#include <windows.h>

#include <utility>

#include "winhost/kernel/waitable.h"
#include "winhost/machine/faults.h"
#include "winhost/window/device_state.h"
#include "winhost/window/inject.h"
#include "winhost/window/window.h"

using namespace winhost;

namespace {

HWND ChangeCapture(HWND window) {
  const auto queue = ThreadQueue::Mine();
  HWND former = nullptr;
  {
    std::scoped_lock lock(WaitLock());
    former = std::exchange(queue->capture, window);
  }
  if (former) SendMessageW(former, WM_CAPTURECHANGED, 0, reinterpret_cast<LPARAM>(window));
  return former;
}

}  // namespace

HWND GetCapture() {
  const auto queue = ThreadQueue::Mine();
  std::scoped_lock lock(WaitLock());
  return queue->capture;
}

HWND SetCapture(HWND handle) {
  const auto window = MyWindow(handle);
  if (!window) return nullptr;
  if (const auto error = PlannedFault("SetCapture", window->window_class->name)) {
    SetLastError(*error);
    return nullptr;
  }
  return ChangeCapture(handle);
}

BOOL ReleaseCapture() {
  ChangeCapture(nullptr);
  return TRUE;
}

UINT GetDoubleClickTime() { return 500; }

BOOL GetCursorPos(LPPOINT screen) {
  if (!screen) return FALSE;
  std::scoped_lock lock(WaitLock());
  *screen = TheDevices().pointer;
  return TRUE;
}

BOOL SetCursorPos(int x, int y) {
  InjectMouse(nullptr, WM_MOUSEMOVE, {x, y}, 0);
  return TRUE;
}

HWND WindowFromPoint(POINT screen) {
  HWND window = TopWindowAt(screen);
  while (window) {
    POINT client = screen;
    ScreenToClient(window, &client);
    const HWND child = ChildWindowFromPoint(window, client);
    if (!child || child == window) break;
    window = child;
  }
  return window;
}

// The frontmost child that is shown there; the parent itself where there is none; null outside of it.
HWND ChildWindowFromPoint(HWND parent, POINT client) {
  RECT inside;
  if (!GetClientRect(parent, &inside) || !PtInRect(&inside, client)) return nullptr;
  const auto children = WindowTable::Current()->List([&](const WindowInfo& info) {
    return info.parent == parent && info.child() && info.shown() && PtInRect(&info.place, client);
  });
  return children.empty() ? parent : children.front().window;
}
