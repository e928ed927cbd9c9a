// Cursors: the system's own, by number.
#include <windows.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "winhost/kernel/waitable.h"
#include "winhost/window/device_state.h"
#include "winhost/window/display.h"

using namespace winhost;

namespace {

constexpr int kCursors[] = {32512, 32513, 32514, 32515, 32642, 32643, 32644, 32645, 32646, 32648, 32649};

}  // namespace

// A cursor's handle is its number, raised so that it is no small integer to anybody.
HCURSOR LoadCursorW(HINSTANCE instance, LPCWSTR name) {
  const auto number = static_cast<int>(reinterpret_cast<ULONG_PTR>(name) & 0xFFFF);
  if (instance || !IS_INTRESOURCE(name) || std::ranges::find(kCursors, number) == std::end(kCursors)) {
    SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
    return nullptr;
  }
  return reinterpret_cast<HCURSOR>(static_cast<ULONG_PTR>(0x10000 + number));
}

HCURSOR SetCursor(HCURSOR cursor) {
  HCURSOR former;
  {
    std::scoped_lock lock(WaitLock());
    former = std::exchange(TheDevices().cursor, cursor);
  }
  if (former != cursor) Display::Current().ShowCursor(cursor);
  return former;
}

HCURSOR GetCursor() {
  std::scoped_lock lock(WaitLock());
  return TheDevices().cursor;
}

int ShowCursor(BOOL show) {
  std::scoped_lock lock(WaitLock());
  return TheDevices().cursor_shows += show ? 1 : -1;
}
