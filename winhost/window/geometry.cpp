#include "winhost/window/geometry.h"

#include "winhost/window/window.h"

namespace winhost {
namespace {

std::optional<WindowInfo> Find(HWND window) {
  auto info = WindowTable::Current()->Find(window);
  if (!info) SetLastError(ERROR_INVALID_WINDOW_HANDLE);
  return info;
}

POINT Origin(const WindowInfo& info) {
  POINT origin{info.place.left, info.place.top};
  std::optional<WindowInfo> below = info;
  while (below->child()) {
    below = WindowTable::Current()->Find(below->parent);
    if (!below) break;
    origin.x += below->place.left + below->client.left;
    origin.y += below->place.top + below->client.top;
  }
  return origin;
}

// The desktop's client area begins where the screen does.
bool ClientOrigin(HWND window, POINT* origin) {
  *origin = {};
  if (!window || window == GetDesktopWindow()) return true;
  const auto info = Find(window);
  if (!info) return false;
  const RECT client = ClientOnScreen(*info);
  *origin = {client.left, client.top};
  return true;
}

}  // namespace

RECT FrameOnScreen(const WindowInfo& info) {
  const POINT origin = Origin(info);
  return {origin.x, origin.y, origin.x + info.place.right - info.place.left,
          origin.y + info.place.bottom - info.place.top};
}

RECT ClientOnScreen(const WindowInfo& info) {
  const POINT origin = Origin(info);
  RECT client = info.client;
  OffsetRect(&client, origin.x, origin.y);
  return client;
}

WindowInfo TopOf(const WindowInfo& info) {
  WindowInfo top = info;
  while (top.child()) {
    auto parent = WindowTable::Current()->Find(top.parent);
    if (!parent) break;
    top = *std::move(parent);
  }
  return top;
}

}  // namespace winhost

using namespace winhost;

BOOL GetWindowRect(HWND window, LPRECT rectangle) {
  if (!rectangle) return FALSE;
  if (window && window == GetDesktopWindow()) {
    return SetRect(rectangle, 0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN));
  }
  const auto info = Find(window);
  if (!info) return FALSE;
  *rectangle = FrameOnScreen(*info);
  return TRUE;
}

BOOL GetClientRect(HWND window, LPRECT rectangle) {
  if (!rectangle) return FALSE;
  if (window && window == GetDesktopWindow()) return GetWindowRect(window, rectangle);
  const auto info = Find(window);
  if (!info) return FALSE;
  *rectangle = {0, 0, info->client.right - info->client.left, info->client.bottom - info->client.top};
  return TRUE;
}

int MapWindowPoints(HWND from, HWND to, LPPOINT points, UINT count) {
  POINT before, after;
  if ((!points && count) || !ClientOrigin(from, &before) || !ClientOrigin(to, &after)) return 0;
  const int dx = before.x - after.x, dy = before.y - after.y;
  for (UINT i = 0; i < count; ++i) {
    points[i].x += dx;
    points[i].y += dy;
  }
  return MAKELONG(dx, dy);
}

BOOL ClientToScreen(HWND window, LPPOINT point) {
  POINT origin;
  if (!point || !window || !ClientOrigin(window, &origin)) return FALSE;
  point->x += origin.x;
  point->y += origin.y;
  return TRUE;
}

BOOL ScreenToClient(HWND window, LPPOINT point) {
  POINT origin;
  if (!point || !window || !ClientOrigin(window, &origin)) return FALSE;
  point->x -= origin.x;
  point->y -= origin.y;
  return TRUE;
}

// Windows have no frame of the system's own.
BOOL AdjustWindowRectEx(LPRECT rectangle, DWORD, BOOL, DWORD) { return rectangle != nullptr; }
