#include "lumo/core/timers.h"

#include "base/lock.h"
#include "lumo/core/timer_queue.h"

#include <algorithm>
#include <mmsystem.h>

namespace lumo {
namespace {

constexpr const WCHAR* kTimerWindowClass = TEXT("LUMO_TIMER_CLASS");
constexpr UINT kTimerMessage = WM_USER + 1;
constexpr UINT kBackToBackMs = 16;
constexpr UINT kResolutionMs = 1;
constexpr UINT kLongestMs = 60'000;  // the system caps periods; waking once a minute costs nothing

struct Timers {
  TimerQueue queue;
  HWND window = nullptr;
  UINT multimedia_timer = 0;
  LONGLONG frequency = 1000;  // ticks a second
};
constinit vanta::Lazy<Timers> process_timers;

LONGLONG Now() {
  LARGE_INTEGER now = {};
  QueryPerformanceCounter(&now);
  return now.QuadPart;
}

// Called by the system on a thread of its own.
void CALLBACK PostTurn(UINT, UINT, DWORD_PTR window, DWORD_PTR, DWORD_PTR) {
  PostMessageW(reinterpret_cast<HWND>(window), kTimerMessage, 0, 0);
}

void Disarm(Timers& timers) {
  if (timers.multimedia_timer) timeKillEvent(timers.multimedia_timer);
  timers.multimedia_timer = 0;
}

void Rearm(Timers& timers) {
  Disarm(timers);
  const std::optional<LONGLONG> due = timers.queue.NextDue();
  if (!due || !timers.window) return;
  const LONGLONG wait_ms = (*due - Now()) * 1000 / timers.frequency;
  const UINT delay =
      wait_ms <= 0 ? kBackToBackMs : static_cast<UINT>(std::clamp<LONGLONG>(wait_ms, kResolutionMs, kLongestMs));
  timers.multimedia_timer = timeSetEvent(delay, kResolutionMs, &PostTurn, reinterpret_cast<DWORD_PTR>(timers.window),
                                         TIME_PERIODIC | TIME_CALLBACK_FUNCTION);
}

void RunTurns(Timers& timers) {
  timers.queue.RunDue(Now());
  Rearm(timers);
}

LRESULT CALLBACK TimerWindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != kTimerMessage) return DefWindowProcW(window, message, wParam, lParam);
  RunTurns(process_timers.Get());
  return 0;
}

}  // namespace

bool StartTimers() {
  Timers& timers = process_timers.Get();
  if (timers.window) return true;
  LARGE_INTEGER frequency = {};
  if (QueryPerformanceFrequency(&frequency) && frequency.QuadPart > 0) timers.frequency = frequency.QuadPart;
  WNDCLASSEXW window_class = {};
  window_class.cbSize = sizeof window_class;
  window_class.lpfnWndProc = &TimerWindowProcedure;
  window_class.hInstance = GetModuleHandleW(nullptr);
  window_class.lpszClassName = kTimerWindowClass;
  if (!RegisterClassExW(&window_class) && GetLastError() != ERROR_CLASS_ALREADY_EXISTS) return false;
  timers.window = CreateWindowExW(0, kTimerWindowClass, nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                  window_class.hInstance, nullptr);
  return timers.window != nullptr;
}

void StopTimers() {
  Timers& timers = process_timers.Get();
  timers.queue.Clear();
  Disarm(timers);
  if (timers.window) DestroyWindow(timers.window);
  timers.window = nullptr;
}

TimerId AddTimer(LivenessBlock* owner, DWORD interval_ms, int repeat, std::function<void()> callback) {
  Timers& timers = process_timers.Get();
  const LONGLONG interval = std::max<LONGLONG>(interval_ms, 1) * timers.frequency / 1000;
  const TimerId timer = timers.queue.Add(owner, Now(), interval, repeat, std::move(callback));
  Rearm(timers);
  return timer;
}

void KillTimer(TimerId timer) {
  Timers& timers = process_timers.Get();
  timers.queue.Remove(timer);
  Rearm(timers);
}

size_t CountTimers() { return process_timers.Get().queue.Count(); }

}  // namespace lumo
