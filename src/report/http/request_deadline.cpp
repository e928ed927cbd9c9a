#include "report/http/request_deadline.h"

#include <mmsystem.h>

#include <utility>

namespace vanta::HttpLib {

constexpr UINT kResolution = 10;  // ms

RequestDeadline::RequestDeadline(DWORD milliseconds) {
  if (milliseconds == 0) return;
  // Killed synchronously, so that the callback cannot come to an object that is gone.
  timer_ = timeSetEvent(milliseconds, kResolution, TimeIsUp, reinterpret_cast<DWORD_PTR>(this),
                        TIME_ONESHOT | TIME_CALLBACK_FUNCTION | TIME_KILL_SYNCHRONOUS);
}

RequestDeadline::~RequestDeadline() {
  if (timer_) timeKillEvent(timer_);
}

bool RequestDeadline::Watch(HINTERNET request) {
  const Guard guard(lock_);
  if (over_) return false;
  watched_ = request;
  return true;
}

bool RequestDeadline::Unwatch() {
  const Guard guard(lock_);
  return std::exchange(watched_, nullptr) != nullptr;
}

void CALLBACK RequestDeadline::TimeIsUp(UINT, UINT, DWORD_PTR deadline, DWORD_PTR, DWORD_PTR) {
  reinterpret_cast<RequestDeadline*>(deadline)->Close();
}

void RequestDeadline::Close() {
  const Guard guard(lock_);
  over_ = true;
  if (watched_) InternetCloseHandle(std::exchange(watched_, nullptr));
}

}  // namespace vanta::HttpLib
