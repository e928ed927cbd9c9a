#include "winhost/window/update.h"

#include <utility>

#include "winhost/kernel/waitable.h"
#include "winhost/window/drawing.h"

namespace winhost {
namespace {

// A region of more pieces costs more than painting what lies between them.
constexpr std::size_t kMostPieces = 32;

RECT ClientOf(const WindowInfo& info) {
  return {0, 0, info.client.right - info.client.left, info.client.bottom - info.client.top};
}

bool Paintable(const WindowInfo& info) { return IsWindowVisible(info.window) && !(info.style & WS_MINIMIZE); }

std::vector<WindowInfo> ChildrenOf(HWND parent) {
  return WindowTable::Current()->List([&](const WindowInfo& info) { return info.parent == parent && info.child(); });
}

std::shared_ptr<Window> Local(HWND handle) {
  auto window = FindLocalWindow(handle);
  if (!window) SetLastError(WindowTable::Current()->Find(handle) ? ERROR_ACCESS_DENIED : ERROR_INVALID_WINDOW_HANDLE);
  return window;
}

void ValidateTree(HWND handle, const RECT* client, bool children) {
  const auto window = FindLocalWindow(handle);
  if (!window) return;
  {
    std::scoped_lock lock(WaitLock());
    if (client) {
      window->update.Subtract(*client);
    } else {
      window->update = RectSet();
    }
    if (window->update.Empty()) window->erase = false;
  }
  if (!children) return;
  for (const WindowInfo& child : ChildrenOf(handle)) ValidateTree(child.window, nullptr, true);
}

bool HasUpdate(HWND handle) {
  const auto window = FindLocalWindow(handle);
  if (!window) return false;
  std::scoped_lock lock(WaitLock());
  return !window->update.Empty() || window->internal_paint;
}

// Every thread paints its own.
void PaintNow(HWND handle, bool children) {
  if (HasUpdate(handle)) SendMessageW(handle, WM_PAINT, 0, 0);
  if (!children) return;
  for (const WindowInfo& child : ChildrenOf(handle)) PaintNow(child.window, true);
}

void SetInternalPaint(HWND handle, bool wanted) {
  const auto window = FindLocalWindow(handle);
  if (!window) return;
  {
    std::scoped_lock lock(WaitLock());
    window->internal_paint = wanted;
  }
  if (wanted) WakeWaiters();
}

}  // namespace

bool Invalidate(HWND handle, const RECT* client, bool erase, bool children) {
  const auto window = Local(handle);
  if (!window) return false;
  const auto info = window->table->Find(handle);
  if (!info || !Paintable(*info)) return true;
  const RECT all = ClientOf(*info);
  RECT part = all;
  if (client) IntersectRect(&part, client, &all);
  if (IsRectEmpty(&part)) return true;
  {
    std::scoped_lock lock(WaitLock());
    window->update.Add(part);
    if (window->update.rects().size() > kMostPieces) window->update = RectSet(window->update.Bounds());
    window->erase = window->erase || erase;
  }
  WakeWaiters();
  if (!children) return true;
  for (const WindowInfo& child : ChildrenOf(handle)) {
    RECT under = part;
    OffsetRect(&under, -child.place.left - child.client.left, -child.place.top - child.client.top);
    Invalidate(child.window, &under, erase, true);
  }
  return true;
}

TakenUpdate TakeUpdate(Window& window) {
  const auto info = window.table->Find(window.handle);
  std::scoped_lock lock(WaitLock());
  TakenUpdate taken{std::exchange(window.update, RectSet()), std::exchange(window.erase, false)};
  window.internal_paint = false;
  if (info) taken.region.Intersect(ClientOf(*info));
  return taken;
}

}  // namespace winhost

using namespace winhost;

BOOL InvalidateRect(HWND window, const RECT* client, BOOL erase) {
  if (window) return Invalidate(window, client, erase != FALSE, true);
  for (const auto& each : LocalWindows([](const Window& known) { return known.handle != nullptr; })) {
    Invalidate(each->handle, nullptr, true, false);
  }
  return TRUE;
}

BOOL ValidateRect(HWND window, const RECT* client) {
  if (!Local(window)) return FALSE;
  ValidateTree(window, client, false);
  if (!client) SetInternalPaint(window, false);
  return TRUE;
}

// Erasing waits for the painting that follows: nothing shows between the two.
BOOL GetUpdateRect(HWND handle, LPRECT client, BOOL) {
  const auto window = Local(handle);
  if (!window) return FALSE;
  RECT bounds;
  {
    std::scoped_lock lock(WaitLock());
    bounds = window->update.Bounds();
  }
  if (client) *client = bounds;
  return !IsRectEmpty(&bounds);
}

BOOL UpdateWindow(HWND window) {
  if (!Local(window)) return FALSE;
  PaintNow(window, true);
  return TRUE;
}

BOOL RedrawWindow(HWND window, const RECT* client, HRGN region, UINT flags) {
  if (!window) return InvalidateRect(nullptr, nullptr, TRUE);
  if (!Local(window)) return FALSE;
  std::vector<RECT> parts;
  if (region) {
    const auto rects = TheDrawing().region_rects ? TheDrawing().region_rects(region) : std::nullopt;
    if (!rects) {
      SetLastError(ERROR_INVALID_HANDLE);
      return FALSE;
    }
    parts = *rects;
  } else if (client) {
    parts.push_back(*client);
  } else {
    const auto info = WindowTable::Current()->Find(window);
    if (info) parts.push_back(ClientOf(*info));
  }
  const bool children = !(flags & RDW_NOCHILDREN);
  for (const RECT& part : parts) {
    if (flags & RDW_INVALIDATE) Invalidate(window, &part, (flags & RDW_ERASE) != 0, children);
    if (flags & RDW_VALIDATE) ValidateTree(window, &part, children && (flags & RDW_ALLCHILDREN));
  }
  if (flags & RDW_INTERNALPAINT) SetInternalPaint(window, true);
  if (flags & RDW_NOINTERNALPAINT) SetInternalPaint(window, false);
  if (flags & RDW_UPDATENOW) PaintNow(window, children);
  return TRUE;
}
