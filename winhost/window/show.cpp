// ShowWindow: hiding, showing, minimising, maximising, going back.
#include <windows.h>

#include <unistd.h>

#include "winhost/kernel/waitable.h"
#include "winhost/window/activation.h"
#include "winhost/window/place.h"
#include "winhost/window/post_office.h"

namespace winhost {
namespace {

constexpr auto kVisible = static_cast<DWORD>(WS_VISIBLE);
constexpr auto kMinimised = static_cast<DWORD>(WS_MINIMIZE);
constexpr auto kMaximised = static_cast<DWORD>(WS_MAXIMIZE);
constexpr int kAway = -32'000;  // where the system keeps minimised windows
constexpr SIZE kMinimisedSize{160, 31};

enum class State { Kept, Normal, Minimised, Maximised };

struct ShowChange {
  bool visible;
  State state;
  bool activates;
};

ShowChange ChangeOf(int show) {
  switch (show) {
    case SW_HIDE:
      return {false, State::Kept, false};
    case SW_SHOWMINIMIZED:
      return {true, State::Minimised, true};
    case SW_MINIMIZE:
    case SW_SHOWMINNOACTIVE:
      return {true, State::Minimised, false};
    case SW_SHOWMAXIMIZED:
      return {true, State::Maximised, true};
    case SW_SHOWNORMAL:
    case SW_RESTORE:
    case SW_SHOWDEFAULT:
      return {true, State::Normal, true};
    case SW_SHOWNOACTIVATE:
      return {true, State::Normal, false};
    case SW_SHOWNA:
      return {true, State::Kept, false};
    default:
      return {true, State::Kept, true};
  }
}

State StateOf(DWORD style) {
  return style & kMinimised ? State::Minimised : style & kMaximised ? State::Maximised : State::Normal;
}

DWORD StyleOf(State state) {
  return state == State::Minimised ? kMinimised : state == State::Maximised ? kMaximised : 0;
}

RECT PlaceFor(Window& window, const WindowInfo& info, State from, State to) {
  if (from == State::Normal) window.restored = info.place;
  if (to == State::Minimised) {
    window.from_maximised = from == State::Maximised;
    return {kAway, kAway, kAway + kMinimisedSize.cx, kAway + kMinimisedSize.cy};
  }
  if (to == State::Normal) return window.restored;
  const MINMAXINFO limits = AskLimits(window.handle);
  return {limits.ptMaxPosition.x, limits.ptMaxPosition.y, limits.ptMaxPosition.x + limits.ptMaxSize.x,
          limits.ptMaxPosition.y + limits.ptMaxSize.y};
}

// A window that was maximised before it was minimised goes back to that.
State Settled(const Window& window, int show, State from, State wanted) {
  if (wanted == State::Kept) return from;
  if (show == SW_RESTORE && from == State::Minimised && window.from_maximised) return State::Maximised;
  return wanted;
}

// Overlapped windows hear of their first size when they are first shown.
void TellFirstSize(Window& window) {
  if (window.sized) return;
  window.sized = true;
  RECT client;
  POINT origin{};
  if (!GetClientRect(window.handle, &client) || !ClientToScreen(window.handle, &origin)) return;
  const WPARAM kind = IsZoomed(window.handle) ? SIZE_MAXIMIZED : SIZE_RESTORED;
  SendMessageW(window.handle, WM_SIZE, kind, MAKELPARAM(client.right, client.bottom));
  SendMessageW(window.handle, WM_MOVE, 0, MAKELPARAM(origin.x, origin.y));
}

// The window of another thread: its style changes at once, for all to see; the rest follows when that thread looks.
void ShowOther(const WindowInfo& info, int show) {
  const ShowChange change = ChangeOf(show);
  const auto table = WindowTable::Current();
  if (const auto local = FindLocalWindow(info.window)) {
    table->SetStyle(info.window, change.visible ? 0 : kVisible, change.visible ? kVisible : 0);
    RunOn(
        local->queue, [=, window = info.window, style = info.style] { ShowMine(window, show, style); }, false);
  } else {
    Packet packet{};
    packet.kind = PacketKind::Show;
    packet.thread = info.thread;
    packet.window = reinterpret_cast<std::uintptr_t>(info.window);
    packet.message = static_cast<std::uint32_t>(show);
    packet.wparam = info.style;
    table->SetStyle(info.window, change.visible ? 0 : kVisible, change.visible ? kVisible : 0);
    PostOffice::Current().Deliver(info.process, packet);
  }
  if (change.activates && info.top_level()) Activate(info.window);
}

}  // namespace

void ShowMine(HWND handle, int show, DWORD former_style) {
  const auto window = MyWindow(handle);
  if (!window) return;
  const ShowChange change = ChangeOf(show);
  const bool was_visible = (former_style & kVisible) != 0;
  if (was_visible != change.visible) SendMessageW(handle, WM_SHOWWINDOW, change.visible, 0);
  const auto info = window->table->Find(handle);
  if (!info) return;
  // As it is now: of two changes that another thread asked for at once, the second finds what the first has done.
  const State from = StateOf(info->style), to = Settled(*window, show, from, change.state);
  // Its thread was asked from elsewhere: the style is there already, the rest has to happen as if it were not.
  if (info->shown() != was_visible) window->table->SetStyle(handle, kVisible, former_style & kVisible);
  WINDOWPOS wanted{handle, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER};
  if (from != to) {
    const RECT place = PlaceFor(*window, *info, from, to);
    wanted = {handle,
              nullptr,
              place.left,
              place.top,
              place.right - place.left,
              place.bottom - place.top,
              SWP_NOZORDER | SWP_FRAMECHANGED};
  }
  wanted.flags |= change.visible ? SWP_SHOWWINDOW : SWP_HIDEWINDOW;
  const bool activates = change.activates && change.visible && !info->child();
  if (activates && to != State::Minimised) wanted.flags &= ~static_cast<UINT>(SWP_NOZORDER);
  if (!activates) wanted.flags |= SWP_NOACTIVATE;
  PlaceWindow(wanted, StyleOf(from) & ~StyleOf(to), StyleOf(to));
  if (change.visible) TellFirstSize(*window);
  if (to == State::Minimised && from != to && !change.activates) ActivateAfter(handle);
}

}  // namespace winhost

using namespace winhost;

BOOL ShowWindow(HWND window, int show) {
  const auto info = WindowTable::Current()->Find(window);
  if (!info) {
    SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    return FALSE;
  }
  if (info->thread == GetCurrentThreadId() && info->process == getpid()) {
    ShowMine(window, show, info->style);
  } else {
    ShowOther(*info, show);
  }
  return info->shown();
}

BOOL GetWindowPlacement(HWND handle, WINDOWPLACEMENT* placement) {
  if (!placement || placement->length != sizeof *placement) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  const auto info = WindowTable::Current()->Find(handle);
  const auto window = FindLocalWindow(handle);
  if (!info || !window) {
    SetLastError(info ? ERROR_ACCESS_DENIED : ERROR_INVALID_WINDOW_HANDLE);
    return FALSE;
  }
  const State state = StateOf(info->style);
  const UINT show = state == State::Minimised   ? SW_SHOWMINIMIZED
                    : state == State::Maximised ? SW_SHOWMAXIMIZED
                                                : SW_SHOWNORMAL;
  const RECT normal = state == State::Normal ? info->place : window->restored;
  *placement = {sizeof *placement, 0, show, {-1, -1}, {-1, -1}, normal};
  return TRUE;
}
