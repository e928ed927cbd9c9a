#include <windows.h>

#include <algorithm>
#include <string>

#include "winhost/kernel/waitable.h"
#include "winhost/machine/clock.h"
#include "winhost/machine/faults.h"
#include "winhost/window/window.h"

using namespace winhost;

namespace {

// The queue that a window's timers are in; the caller's for none, null with the last error for a foreign window.
std::shared_ptr<ThreadQueue> QueueOf(HWND window) {
  if (!window) return ThreadQueue::Mine();
  if (const auto local = FindLocalWindow(window)) return local->queue;
  SetLastError(IsWindow(window) ? ERROR_ACCESS_DENIED : ERROR_INVALID_WINDOW_HANDLE);
  return nullptr;
}

}  // namespace

UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC procedure) {
  const auto local = FindLocalWindow(window);
  if (const auto error = PlannedFault("SetTimer", local ? local->window_class->name : std::u16string())) {
    SetLastError(*error);
    return 0;
  }
  const auto queue = QueueOf(window);
  if (!queue) return 0;
  const UINT period = std::clamp<UINT>(milliseconds, USER_TIMER_MINIMUM, USER_TIMER_MAXIMUM);
  const std::uint64_t due = MachineTicksMs() + period;
  {
    std::scoped_lock lock(WaitLock());
    auto& timers = queue->timers;
    const auto same = [&](const WindowTimer& timer) {
      return timer.window == window && timer.id == id && timer.message == WM_TIMER;
    };
    auto found = std::ranges::find_if(timers, same);
    if (found == timers.end()) {
      if (!window) id = ++queue->last_timer_id;  // a number that is nobody's timer is no wish either
      found = timers.insert(timers.end(), WindowTimer{});
    }
    *found = {window, id, period, due, procedure, WM_TIMER, 0};
  }
  WakeWaiters();
  return window && id == 0 ? 1 : id;
}

BOOL KillTimer(HWND window, UINT_PTR id) {
  const auto queue = QueueOf(window);
  if (!queue) return FALSE;
  std::scoped_lock lock(WaitLock());
  const auto same = [&](const WindowTimer& timer) {
    return timer.window == window && timer.id == id && timer.message == WM_TIMER;
  };
  if (std::erase_if(queue->timers, same) > 0) return TRUE;
  SetLastError(ERROR_INVALID_PARAMETER);
  return FALSE;
}
