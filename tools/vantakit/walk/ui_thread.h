// The UI thread of the process being walked, as the walker's thread sees it. Between two steps it is held still at a
// moment when it has nothing left to do, so that what a step saw is still so when the next begins; other threads (an
// installation) go on meanwhile.
#pragma once

#include <windows.h>

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <exception>
#include <functional>
#include <mutex>
#include <optional>

namespace vantakit {

class UiThread {
 public:
  using Clock = std::chrono::steady_clock;
  enum class Answer {
    Still,    // it is held, with nothing posted, no input, no part to paint and no timer that was due
    Gone,     // it has no window (any more)
    Ended,    // its program is over
    TooLate,  // it has not come to rest by the deadline
  };

  // `has_window` is asked by whoever settles the thread.
  UiThread(DWORD thread, bool (*has_window)()) : thread_(thread), has_window_(has_window) {}
  UiThread(const UiThread&) = delete;
  UiThread& operator=(const UiThread&) = delete;

  // Lets it work until it has nothing left to do, and holds it there. A thread without a window is not waited for: it
  // looks for no messages.
  Answer Settle(Clock::time_point deadline);
  // Runs on the thread while it is held; what `act` throws is thrown here.
  void Run(const std::function<void()>& act);
  void Release();
  // Called on the thread itself when its program is over: nobody waits for it any longer.
  void End();

 private:
  enum class State { Away, Held, Ended };
  std::optional<Answer> AwaitVisit(std::unique_lock<std::mutex>& lock, Clock::time_point deadline);
  bool PostVisit(std::uint64_t visit, std::uint64_t now_ms);
  void Visit(std::uint64_t visit, std::uint64_t now_ms);
  void ServeWhileHeld(std::unique_lock<std::mutex>& lock);

  const DWORD thread_;
  bool (*const has_window_)();
  std::mutex lock_;
  std::condition_variable changed_;
  State state_ = State::Away;
  std::uint64_t visit_ = 0;     // the latest that was asked for; an earlier one that comes late does nothing
  std::uint64_t answered_ = 0;  // the latest that has come
  const std::function<void()>* act_ = nullptr;
  std::exception_ptr thrown_;
};

}  // namespace vantakit
