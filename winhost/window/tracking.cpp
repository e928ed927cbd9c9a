#include "winhost/window/tracking.h"

#include <cstdlib>
#include <utility>

#include "winhost/kernel/waitable.h"
#include "winhost/machine/clock.h"
#include "winhost/window/device_state.h"
#include "winhost/window/window.h"

namespace winhost {
namespace {

constexpr DWORD kHoverMs = 400;
constexpr int kHoverReach = 4;  // the pointer may tremble by so much and still hovers

// Both with WaitLock held.
void StopHover(ThreadQueue& queue) {
  std::erase_if(queue.timers, [](const WindowTimer& timer) { return timer.message == WM_MOUSEHOVER; });
}

void StartHover(ThreadQueue& queue, POINT screen, POINT client) {
  StopHover(queue);
  queue.tracking.hover_from = screen;
  WindowTimer timer;
  timer.window = queue.tracking.window;
  timer.message = WM_MOUSEHOVER;
  timer.period_ms = queue.tracking.hover_ms;
  timer.due_ms = MachineTicksMs() + timer.period_ms;
  timer.point = MAKELPARAM(client.x, client.y);
  queue.timers.push_back(timer);
}

void Leave(ThreadQueue& queue) {
  MSG leave{};
  {
    std::scoped_lock lock(WaitLock());
    StopHover(queue);
    const MouseTracking tracking = std::exchange(queue.tracking, {});
    if (!tracking.window || !(tracking.flags & TME_LEAVE)) return;
    leave.hwnd = tracking.window;
    leave.message = tracking.flags & TME_NONCLIENT ? WM_NCMOUSELEAVE : WM_MOUSELEAVE;
    leave.time = static_cast<DWORD>(MachineTicksMs());
    queue.Post(leave);
  }
  WakeWaiters();
}

bool Trembles(POINT from, POINT to) {
  return std::abs(from.x - to.x) <= kHoverReach / 2 && std::abs(from.y - to.y) <= kHoverReach / 2;
}

}  // namespace

void PointerMoved(ThreadQueue& queue, HWND window, int part, POINT screen) {
  MouseTracking tracking;
  {
    std::scoped_lock lock(WaitLock());
    tracking = queue.tracking;
  }
  if (!tracking.window) return;
  const bool wants_client = !(tracking.flags & TME_NONCLIENT);
  if (window != tracking.window || (part == HTCLIENT) != wants_client) {
    Leave(queue);
    return;
  }
  if (!(tracking.flags & TME_HOVER) || Trembles(tracking.hover_from, screen)) return;
  POINT client = screen;
  ScreenToClient(window, &client);
  std::scoped_lock lock(WaitLock());
  StartHover(queue, screen, client);
}

void PointerLeft(ThreadQueue& queue) { Leave(queue); }

}  // namespace winhost

using namespace winhost;

BOOL TrackMouseEvent(LPTRACKMOUSEEVENT track) {
  if (!track || track->cbSize != sizeof *track) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  const auto queue = ThreadQueue::Mine();
  if (track->dwFlags & TME_QUERY) {
    std::scoped_lock lock(WaitLock());
    const MouseTracking& now = queue->tracking;
    *track = {sizeof *track, now.flags, now.window, now.hover_ms};
    return TRUE;
  }
  if (!MyWindow(track->hwndTrack)) return FALSE;
  POINT screen;
  {
    std::scoped_lock lock(WaitLock());
    screen = TheDevices().pointer;
  }
  POINT client = screen;
  ScreenToClient(track->hwndTrack, &client);
  {
    std::scoped_lock lock(WaitLock());
    MouseTracking& tracking = queue->tracking;
    const DWORD flags = track->dwFlags & static_cast<DWORD>(TME_HOVER | TME_LEAVE | TME_NONCLIENT);
    if (track->dwFlags & TME_CANCEL) {
      if (tracking.window != track->hwndTrack) return TRUE;
      tracking.flags &= ~flags;
    } else {
      if (tracking.window != track->hwndTrack) tracking = {};
      tracking.window = track->hwndTrack;
      tracking.flags |= flags;
      if (flags & TME_HOVER) {
        const bool usual = track->dwHoverTime == HOVER_DEFAULT || track->dwHoverTime == 0;
        tracking.hover_ms = usual ? kHoverMs : track->dwHoverTime;
        StartHover(*queue, screen, client);
      }
    }
    if (!(tracking.flags & TME_HOVER)) StopHover(*queue);
    if (!(tracking.flags & (TME_HOVER | TME_LEAVE))) tracking = {};
  }
  WakeWaiters();
  return TRUE;
}
