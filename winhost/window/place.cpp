#include "winhost/window/place.h"

#include <algorithm>

#include "winhost/kernel/waitable.h"
#include "winhost/machine/faults.h"
#include "winhost/window/activation.h"
#include "winhost/window/display.h"
#include "winhost/window/geometry.h"
#include "winhost/window/update.h"

namespace winhost {
namespace {

constexpr int kLargest = 32'767;

int Width(const RECT& rectangle) { return rectangle.right - rectangle.left; }
int Height(const RECT& rectangle) { return rectangle.bottom - rectangle.top; }

RECT PlaceOf(const WINDOWPOS& wanted, const RECT& before) {
  RECT place = before;
  if (!(wanted.flags & SWP_NOMOVE)) {
    place = {wanted.x, wanted.y, wanted.x + Width(before), wanted.y + Height(before)};
  }
  if (!(wanted.flags & SWP_NOSIZE)) {
    place.right = place.left + std::clamp(wanted.cx, 0, kLargest);
    place.bottom = place.top + std::clamp(wanted.cy, 0, kLargest);
  }
  return place;
}

// Takes out of the flags what would change nothing.
void Settle(WINDOWPOS& wanted, const WindowInfo& info, const RECT& place) {
  wanted.x = place.left;
  wanted.y = place.top;
  wanted.cx = Width(place);
  wanted.cy = Height(place);
  if (place.left == info.place.left && place.top == info.place.top) wanted.flags |= SWP_NOMOVE;
  if (wanted.cx == Width(info.place) && wanted.cy == Height(info.place)) wanted.flags |= SWP_NOSIZE;
  if (info.shown()) wanted.flags &= ~static_cast<UINT>(SWP_SHOWWINDOW);
  if (!info.shown()) wanted.flags &= ~static_cast<UINT>(SWP_HIDEWINDOW);
}

struct ClientChange {
  RECT client;
  bool redraw;  // all of it, since the window said so
};

ClientChange AskNewClient(const WINDOWPOS& wanted, const WindowInfo& info, const RECT& place) {
  WINDOWPOS copy = wanted;
  RECT old_client = info.client;
  OffsetRect(&old_client, info.place.left, info.place.top);
  NCCALCSIZE_PARAMS sizes{{place, info.place, old_client}, &copy};
  const LRESULT answer = SendMessageW(info.window, WM_NCCALCSIZE, TRUE, reinterpret_cast<LPARAM>(&sizes));
  RECT client = sizes.rgrc[0];
  OffsetRect(&client, -place.left, -place.top);
  if (client.right < client.left) client.right = client.left;
  if (client.bottom < client.top) client.bottom = client.top;
  return {client, (answer & WVR_REDRAW) != 0};
}

void Restack(const WINDOWPOS& wanted) {
  const auto table = WindowTable::Current();
  const HWND window = wanted.hwnd, after = wanted.hwndInsertAfter;
  const auto info = table->Find(window);
  if (!info) return;
  constexpr auto kTopmost = static_cast<DWORD>(WS_EX_TOPMOST);
  if (after == HWND_TOPMOST) table->SetExStyle(window, info->ex_style | kTopmost);
  if (after == HWND_NOTOPMOST || after == HWND_BOTTOM) table->SetExStyle(window, info->ex_style & ~kTopmost);
  if (after == HWND_BOTTOM) {
    table->Lower(window);
  } else if (after == HWND_TOP || after == HWND_TOPMOST || after == HWND_NOTOPMOST) {
    BringForward(window);
  } else {
    table->PutBehind(window, after);
  }
}

// A picture keeps what it had; the rest of the client area is new.
void RenewPicture(Window& window, const WindowInfo& before, const RECT& place, const ClientChange& change,
                  const WINDOWPOS& done) {
  {
    std::scoped_lock lock(WaitLock());
    if (window.picture) window.picture = FitPicture(window.picture, Width(place), Height(place));
  }
  if (done.flags & SWP_NOREDRAW) return;
  const RECT all{0, 0, Width(change.client), Height(change.client)};
  const RECT kept{0, 0, std::min(Width(before.client), all.right), std::min(Height(before.client), all.bottom)};
  const UINT style = window.window_class->values.style;
  const bool stretched = ((style & CS_HREDRAW) && Width(before.client) != all.right) ||
                         ((style & CS_VREDRAW) && Height(before.client) != all.bottom);
  const bool moved_inside = before.client.left != change.client.left || before.client.top != change.client.top;
  if ((done.flags & SWP_SHOWWINDOW) || change.redraw || stretched || moved_inside || (done.flags & SWP_NOCOPYBITS)) {
    Invalidate(window.handle, nullptr, true, true);
    return;
  }
  RectSet fresh(all);
  fresh.Subtract(kept);
  for (const RECT& part : fresh.rects()) Invalidate(window.handle, &part, true, false);
}

bool Changes(const WINDOWPOS& done) {
  constexpr UINT kNothing = SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER;
  return (done.flags & kNothing) != kNothing || (done.flags & (SWP_SHOWWINDOW | SWP_HIDEWINDOW | SWP_FRAMECHANGED));
}

// Changes style and place, with everything that follows from it but the activation.
void Perform(const std::shared_ptr<Window>& window, WINDOWPOS done, DWORD clear_style, DWORD set_style,
             bool tell_display) {
  const auto table = window->table;
  const auto before = table->Find(window->handle);
  if (!before) return;
  const RECT place = PlaceOf(done, before->place);
  Settle(done, *before, place);
  const auto visible = static_cast<DWORD>(WS_VISIBLE);
  if (done.flags & SWP_SHOWWINDOW) set_style |= visible;
  if (done.flags & SWP_HIDEWINDOW) clear_style |= visible;
  table->SetStyle(window->handle, clear_style, set_style);
  ClientChange change{before->client, false};
  const bool minimised = ((before->style & ~clear_style) | set_style) & WS_MINIMIZE;
  const bool was_minimised = (before->style & WS_MINIMIZE) != 0;
  if (minimised) {
    change.client = {};
  } else if (!(done.flags & SWP_NOSIZE) || (done.flags & SWP_FRAMECHANGED) || was_minimised) {
    change = AskNewClient(done, *before, place);
  }
  if (!table->Find(window->handle)) return;
  table->SetPlace(window->handle, place, change.client);
  if (!(done.flags & SWP_NOZORDER)) Restack(done);
  if (minimised || (done.flags & SWP_HIDEWINDOW)) {
    TakeUpdate(*window);  // nobody sees it; showing it again makes all of it new
  } else {
    RenewPicture(*window, *before, place, change, done);
  }
  if (tell_display) Display::Current().Changed(window->handle);
  if (Changes(done)) SendMessageW(window->handle, WM_WINDOWPOSCHANGED, 0, reinterpret_cast<LPARAM>(&done));
}

}  // namespace

RECT AskClient(HWND window, const RECT& place) {
  RECT client = place;
  SendMessageW(window, WM_NCCALCSIZE, FALSE, reinterpret_cast<LPARAM>(&client));
  OffsetRect(&client, -place.left, -place.top);
  return client;
}

MINMAXINFO AskLimits(HWND window) {
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &monitor);
  MINMAXINFO limits{};
  limits.ptMaxSize = {Width(monitor.rcWork), Height(monitor.rcWork)};
  limits.ptMaxPosition = {monitor.rcWork.left, monitor.rcWork.top};
  limits.ptMinTrackSize = {0, 0};
  limits.ptMaxTrackSize = {GetSystemMetrics(SM_CXMAXTRACK), GetSystemMetrics(SM_CYMAXTRACK)};
  SendMessageW(window, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
  return limits;
}

bool PlaceWindow(const WINDOWPOS& asked, DWORD clear_style, DWORD set_style) {
  const auto window = MyWindow(asked.hwnd);
  if (!window) return false;
  WINDOWPOS wanted = asked;
  const auto before = window->table->Find(asked.hwnd);
  if (!before) return false;
  // What is not asked for is filled in: the window may look at it before it changes anything.
  if (wanted.flags & SWP_NOMOVE) wanted.x = before->place.left, wanted.y = before->place.top;
  if (wanted.flags & SWP_NOSIZE) wanted.cx = Width(before->place), wanted.cy = Height(before->place);
  if (!(wanted.flags & SWP_NOSENDCHANGING)) {
    SendMessageW(asked.hwnd, WM_WINDOWPOSCHANGING, 0, reinterpret_cast<LPARAM>(&wanted));
    wanted.hwnd = asked.hwnd;
  }
  const bool was_shown = before->shown();
  Perform(window, wanted, clear_style, set_style, true);
  const auto now = window->table->Find(asked.hwnd);
  if (!now) return true;
  if (was_shown && !now->shown() && now->top_level()) {
    ActivateAfter(asked.hwnd);
  } else if (!(wanted.flags & SWP_NOACTIVATE) && now->shown() && now->top_level() &&
             window->table->Foreground() != asked.hwnd) {
    Activate(asked.hwnd);
  }
  return true;
}

void FollowDisplay(HWND handle, const RECT& place) {
  const auto window = FindLocalWindow(handle);
  if (!window) return;
  const WINDOWPOS done{
      handle, nullptr, place.left, place.top, Width(place), Height(place), SWP_NOZORDER | SWP_NOACTIVATE};
  Perform(window, done, 0, 0, false);
}

}  // namespace winhost

using namespace winhost;

BOOL SetWindowPos(HWND handle, HWND after, int x, int y, int width, int height, UINT flags) {
  const auto window = FindLocalWindow(handle);
  if (!window) {
    SetLastError(WindowTable::Current()->Find(handle) ? ERROR_ACCESS_DENIED : ERROR_INVALID_WINDOW_HANDLE);
    return FALSE;
  }
  if (const auto error = PlannedFault("SetWindowPos", window->window_class->name)) {
    SetLastError(*error);
    return FALSE;
  }
  bool placed = true;
  const WINDOWPOS wanted{handle, after, x, y, width, height, flags};
  RunOn(
      window->queue, [&] { placed = PlaceWindow(wanted); }, true);
  return placed;
}

BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint) {
  return SetWindowPos(window, nullptr, x, y, width, height,
                      SWP_NOZORDER | SWP_NOACTIVATE | (repaint ? 0u : static_cast<UINT>(SWP_NOREDRAW)));
}
