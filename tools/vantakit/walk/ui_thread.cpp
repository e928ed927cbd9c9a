#include "tools/vantakit/walk/ui_thread.h"

#include <thread>
#include <utility>

#include "winhost/kernel/waitable.h"
#include "winhost/machine/clock.h"
#include "winhost/window/thread_queue.h"

namespace vantakit {
namespace {

// Before asking a thread again that was busy.
constexpr std::chrono::milliseconds kAskAgain(1);
// Whether a thread that does not come still has a window.
constexpr std::chrono::milliseconds kLookAgain(20);

bool HasNothingToDo(std::uint64_t now_ms) {
  const auto queue = winhost::ThreadQueue::Mine();
  std::scoped_lock lock(winhost::WaitLock());
  return queue->Status(now_ms) == 0;
}

}  // namespace

UiThread::Answer UiThread::Settle(Clock::time_point deadline) {
  const std::uint64_t now_ms = winhost::MachineTicksMs();
  std::unique_lock lock(lock_);
  while (state_ != State::Ended) {
    const std::uint64_t visit = ++visit_;
    lock.unlock();
    // Before the thread is let go, so that it finds the next visit at once and does not begin to wait in between.
    const bool posted = PostVisit(visit, now_ms);
    lock.lock();
    if (!posted) answered_ = visit;
    if (state_ == State::Held) state_ = State::Away;
    changed_.notify_all();
    if (const auto ended = AwaitVisit(lock, deadline)) {
      if (*ended != Answer::Still) ++visit_;  // one that comes yet must not hold the thread
      return *ended;
    }
  }
  return Answer::Ended;
}

// None: the thread was busy, and can be asked again.
std::optional<UiThread::Answer> UiThread::AwaitVisit(std::unique_lock<std::mutex>& lock, Clock::time_point deadline) {
  const auto answered = [&] { return state_ == State::Ended || answered_ == visit_; };
  while (!changed_.wait_for(lock, kLookAgain, answered)) {
    lock.unlock();
    const bool window = has_window_();
    lock.lock();
    if (answered()) break;
    if (!window) return Answer::Gone;
    if (Clock::now() >= deadline) return Answer::TooLate;
  }
  if (state_ == State::Ended) return Answer::Ended;
  if (state_ == State::Held) return Answer::Still;
  changed_.wait_for(lock, kAskAgain, [&] { return state_ == State::Ended; });
  if (Clock::now() >= deadline) return Answer::TooLate;
  return std::nullopt;
}

// False when the thread has no queue yet.
bool UiThread::PostVisit(std::uint64_t visit, std::uint64_t now_ms) {
  std::shared_ptr<winhost::ThreadQueue> queue;
  {
    std::scoped_lock lock(winhost::WaitLock());
    queue = winhost::ThreadQueue::Of(thread_);
  }
  const auto task = [this, visit, now_ms] { Visit(visit, now_ms); };
  if (queue) winhost::RunOn(queue, task, false);
  return queue != nullptr;
}

// On the UI thread, while that looks for messages.
void UiThread::Visit(std::uint64_t visit, std::uint64_t now_ms) {
  const bool still = HasNothingToDo(now_ms);
  std::unique_lock lock(lock_);
  if (visit != visit_) return;
  answered_ = visit;
  if (still) state_ = State::Held;
  changed_.notify_all();
  if (still) ServeWhileHeld(lock);
}

void UiThread::ServeWhileHeld(std::unique_lock<std::mutex>& lock) {
  while (state_ == State::Held) {
    if (!act_) {
      changed_.wait(lock);
      continue;
    }
    const std::function<void()>& act = *act_;
    lock.unlock();
    std::exception_ptr thrown;
    try {
      act();
    } catch (...) {
      thrown = std::current_exception();
    }
    lock.lock();
    thrown_ = thrown;
    act_ = nullptr;
    changed_.notify_all();
  }
}

void UiThread::Run(const std::function<void()>& act) {
  std::unique_lock lock(lock_);
  if (state_ != State::Held) return;
  act_ = &act;
  changed_.notify_all();
  changed_.wait(lock, [&] { return !act_; });
  if (thrown_) std::rethrow_exception(std::exchange(thrown_, nullptr));
}

void UiThread::Release() {
  std::scoped_lock lock(lock_);
  ++visit_;
  if (state_ == State::Held) state_ = State::Away;
  changed_.notify_all();
}

void UiThread::End() {
  std::scoped_lock lock(lock_);
  state_ = State::Ended;
  changed_.notify_all();
}

}  // namespace vantakit
