#include <mmsystem.h>

#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>

#include "winhost/machine/clock.h"
#include "winhost/machine/faults.h"
#include "winhost/machine/machine.h"

namespace winhost {
namespace {

// The system clock, because waits on it are pthread_cond_timedwait, which ThreadSanitizer knows.
using RealClock = std::chrono::system_clock;
constexpr std::uint64_t kLookEveryNs = 2'000'000;  // at a clock that stands: others move it on
constexpr std::uint64_t kLongestWaitNs = 60'000'000'000;
constexpr UINT kLongestDelay = 1'000'000;

struct Timer {
  std::uint64_t due_ms = 0;  // as MachineTicksMs counts
  UINT delay_ms = 0;
  LPTIMECALLBACK callback = nullptr;
  DWORD_PTR user = 0;
  UINT flags = 0;
};

// A machine's timers in this process, and the thread that runs them.
class MultimediaTimers {
 public:
  // Asking for the time makes the clock, which then outlives this.
  explicit MultimediaTimers(Machine& machine) : machine_(machine) { MachineTicksMs(machine_); }
  ~MultimediaTimers() {
    {
      const std::scoped_lock lock(lock_);
      ending_ = true;
    }
    changed_.notify_all();
    if (thread_.joinable()) thread_.join();
  }

  UINT Set(Timer timer) {
    UINT id = 0;
    {
      const std::scoped_lock lock(lock_);
      timer.due_ms = MachineTicksMs(machine_) + timer.delay_ms;
      id = ++last_id_;
      timers_[id] = timer;
      if (!thread_.joinable()) thread_ = std::thread([this] { Run(); });
    }
    changed_.notify_all();
    return id;
  }

  bool Kill(UINT id) {
    std::unique_lock lock(lock_);
    const auto found = timers_.find(id);
    if (found == timers_.end()) return false;
    const bool synchronous = (found->second.flags & TIME_KILL_SYNCHRONOUS) != 0;
    timers_.erase(found);
    if (synchronous && std::this_thread::get_id() != thread_.get_id()) {
      changed_.wait(lock, [&] { return running_ != id; });
    }
    return true;
  }

 private:
  void Run() {
    std::unique_lock lock(lock_);
    while (!ending_) {
      const auto next = Next();
      if (next == timers_.end()) {
        changed_.wait(lock);
      } else if (const std::uint64_t now = MachineTicksMs(machine_); now < next->second.due_ms) {
        changed_.wait_until(lock, RealClock::now() + RealTime(next->second.due_ms - now));
      } else {
        Fire(lock, next->first);
      }
    }
  }

  std::map<UINT, Timer>::iterator Next() {
    auto next = timers_.begin();
    for (auto at = timers_.begin(); at != timers_.end(); ++at) {
      if (at->second.due_ms < next->second.due_ms) next = at;
    }
    return next;
  }

  std::chrono::nanoseconds RealTime(std::uint64_t ms) const {
    const bool stands = machine_.facts().clock.stands;
    const std::uint64_t ns = stands ? kLookEveryNs : RealWaitNs(machine_, static_cast<std::uint32_t>(ms));
    return std::chrono::nanoseconds(std::min(ns, kLongestWaitNs));
  }

  // A periodic timer goes on from when it was due, so that it keeps its rate.
  void Fire(std::unique_lock<std::mutex>& lock, UINT id) {
    const Timer timer = timers_[id];
    timers_[id].due_ms += timer.delay_ms;
    running_ = id;
    lock.unlock();
    timer.callback(id, 0, timer.user, 0, 0);
    lock.lock();
    running_ = 0;
    if (!(timer.flags & TIME_PERIODIC)) timers_.erase(id);
    changed_.notify_all();
  }

  Machine& machine_;
  std::mutex lock_;
  std::condition_variable changed_;
  std::map<UINT, Timer> timers_;
  UINT last_id_ = 0;
  UINT running_ = 0;  // 0: none
  bool ending_ = false;
  std::thread thread_;
};

MultimediaTimers& Timers() { return Machine::Current().Get<MultimediaTimers>(); }

}  // namespace
}  // namespace winhost

using namespace winhost;

MMRESULT timeSetEvent(UINT delay_ms, UINT, LPTIMECALLBACK callback, DWORD_PTR user, UINT flags) {
  if (delay_ms == 0 || delay_ms > kLongestDelay || !callback) return 0;
  if (flags & ~static_cast<UINT>(TIME_PERIODIC | TIME_KILL_SYNCHRONOUS)) return 0;
  if (PlannedFault("timeSetEvent")) return 0;
  return Timers().Set({.delay_ms = delay_ms, .callback = callback, .user = user, .flags = flags});
}

MMRESULT timeKillEvent(UINT timer) { return Timers().Kill(timer) ? TIMERR_NOERROR : MMSYSERR_INVALPARAM; }
