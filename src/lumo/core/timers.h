// The library's timers: callbacks on the UI thread, driven by one multimedia timer that only posts a message to a
// message-only window. A timer whose owner is gone is dropped without running.
//
// UI thread only, between StartTimers and StopTimers.
#pragma once

#include "lumo/core/weak.h"

#include <functional>

namespace lumo {

using TimerId = unsigned;  // 0 is no timer
inline constexpr int kEndless = -1;

// Makes the message-only window. False when the system refuses; timers then never fire.
bool StartTimers();
// Drops every timer, kills the multimedia timer and destroys the window.
void StopTimers();

// For StartTimer; takes over the caller's reference of `owner`.
TimerId AddTimer(LivenessBlock* owner, DWORD interval_ms, int repeat, std::function<void()> callback);

// Runs `callback` every `interval_ms` (at least 1) for as long as `owner` lives, `repeat` times or without end. Missed
// turns are not made up for. The callback may kill its own timer and destroy its owner.
template <class T>
TimerId StartTimer(T* owner, DWORD interval_ms, int repeat, std::function<void()> callback) {
  return AddTimer(owner->ShareLiveness(), interval_ms, repeat, std::move(callback));
}

// Unknown and ended timers are passed over.
void KillTimer(TimerId timer);

// How many timers wait: for leak checks.
size_t CountTimers();

}  // namespace lumo
