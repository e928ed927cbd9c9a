#include "winhost/window/activation.h"

#include <unistd.h>

#include <utility>

#include "winhost/kernel/waitable.h"
#include "winhost/window/display.h"
#include "winhost/window/geometry.h"
#include "winhost/window/post_office.h"
#include "winhost/window/window.h"

namespace winhost {
namespace {

HWND SetActive(HWND window) {
  const auto queue = ThreadQueue::Mine();
  std::scoped_lock lock(WaitLock());
  return std::exchange(queue->active, window);
}

bool IsMine(HWND window) {
  const auto local = FindLocalWindow(window);
  return local && local->queue->thread == GetCurrentThreadId();
}

// Tells a window's own thread; which may be another program's.
void TellOwner(const WindowInfo& info, PacketKind what) {
  if (info.process != getpid()) {
    Packet packet{};
    packet.kind = what;
    packet.thread = info.thread;
    packet.window = reinterpret_cast<std::uintptr_t>(info.window);
    PostOffice::Current().Deliver(info.process, packet);
    return;
  }
  const auto local = FindLocalWindow(info.window);
  if (!local) return;
  const HWND window = what == PacketKind::Activate ? info.window : nullptr;
  RunOn(
      local->queue, [window] { ActivateMine(window, false); }, false);
}

bool CanTakeOver(const WindowInfo& info) {
  return info.top_level() && info.shown() && !(info.style & (WS_DISABLED | WS_MINIMIZE)) &&
         !(info.ex_style & (WS_EX_NOACTIVATE | WS_EX_TRANSPARENT));
}

}  // namespace

void BringForward(HWND window) {
  const auto table = WindowTable::Current();
  table->Raise(window);
  const auto owned = table->List([&](const WindowInfo& info) { return info.parent == window && info.top_level(); });
  for (auto each = owned.rbegin(); each != owned.rend(); ++each) BringForward(each->window);
  Display::Current().Changed(window);
}

void ActivateMine(HWND window, bool by_click) {
  const HWND former = SetActive(window);
  if (former == window) return;
  if (IsMine(former)) {
    SendMessageW(former, WM_NCACTIVATE, FALSE, 0);
    SendMessageW(former, WM_ACTIVATE, WA_INACTIVE, reinterpret_cast<LPARAM>(window));
  }
  if (!window) {
    SetFocus(nullptr);
    return;
  }
  if (!IsMine(window)) return;  // it ended itself on hearing of it
  SendMessageW(window, WM_NCACTIVATE, TRUE, 0);
  SendMessageW(window, WM_ACTIVATE, by_click ? WA_CLICKACTIVE : WA_ACTIVE, reinterpret_cast<LPARAM>(former));
}

bool Activate(HWND window, bool by_click) {
  const auto table = WindowTable::Current();
  const auto info = table->Find(window);
  if (!info) {
    SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    return false;
  }
  BringForward(window);
  const HWND former = table->SetForeground(window);
  const auto before = former ? table->Find(former) : std::nullopt;
  if (before && before->thread != info->thread) TellOwner(*before, PacketKind::Deactivate);
  if (info->thread == GetCurrentThreadId()) {
    ActivateMine(window, by_click);
  } else {
    TellOwner(*info, PacketKind::Activate);
  }
  Display::Current().Activated(window);
  return true;
}

void ActivateAfter(HWND gone) {
  const auto table = WindowTable::Current();
  const bool was_foreground = table->Foreground() == gone;
  if (GetActiveWindow() != gone && !was_foreground) return;
  const auto info = table->Find(gone);
  const auto owner = info && info->parent ? table->Find(info->parent) : std::nullopt;
  HWND next = owner && CanTakeOver(*owner) && IsMine(owner->window) ? owner->window : nullptr;
  if (!next) {
    const auto others = table->List([&](const WindowInfo& each) {
      return each.window != gone && each.thread == GetCurrentThreadId() && CanTakeOver(each);
    });
    if (!others.empty()) next = others.front().window;
  }
  if (next && was_foreground) {
    Activate(next);
    return;
  }
  if (was_foreground) table->SetForeground(nullptr);
  ActivateMine(next, false);
}

}  // namespace winhost

using namespace winhost;

HWND GetForegroundWindow() { return WindowTable::Current()->Foreground(); }

BOOL SetForegroundWindow(HWND window) {
  const auto info = WindowTable::Current()->Find(window);
  return Activate(info ? TopOf(*info).window : window);
}

BOOL BringWindowToTop(HWND window) {
  if (!IsWindow(window)) return FALSE;
  BringForward(window);
  return TRUE;
}

HWND GetActiveWindow() {
  const auto queue = ThreadQueue::Mine();
  std::scoped_lock lock(WaitLock());
  return queue->active;
}

HWND SetActiveWindow(HWND window) {
  const HWND former = GetActiveWindow();
  if (!window) {
    ActivateMine(nullptr, false);
    return former;
  }
  if (!MyWindow(window)) return nullptr;
  Activate(window);
  return former;
}

HWND GetFocus() {
  const auto queue = ThreadQueue::Mine();
  std::scoped_lock lock(WaitLock());
  return queue->focus;
}

HWND SetFocus(HWND window) {
  const auto queue = ThreadQueue::Mine();
  if (window) {
    if (!MyWindow(window)) return nullptr;
    const auto info = WindowTable::Current()->Find(window);
    if (!info || (info->style & (WS_DISABLED | WS_MINIMIZE))) return nullptr;
    const HWND top = TopOf(*info).window;
    if (top != GetActiveWindow()) Activate(top);
  }
  HWND former = nullptr;
  {
    std::scoped_lock lock(WaitLock());
    former = std::exchange(queue->focus, window);
  }
  if (former == window) return former;
  if (former) SendMessageW(former, WM_KILLFOCUS, reinterpret_cast<WPARAM>(window), 0);
  if (window && GetFocus() == window) SendMessageW(window, WM_SETFOCUS, reinterpret_cast<WPARAM>(former), 0);
  return former;
}
