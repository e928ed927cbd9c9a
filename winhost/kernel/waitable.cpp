#include "winhost/kernel/waitable.h"

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>

#include "winhost/kernel/thread_object.h"
#include "winhost/machine/clock.h"

namespace winhost {
namespace {

// Made threads that wait and have seen the last change. A thread that a change has woken works again from the moment
// of the change, although it may run only later.
struct Settled {
  std::mutex lock;
  std::uint64_t changes = 0;
  int threads = 0;
};

Settled& TheSettled() {
  static auto* settled = new Settled;  // as Changed()
  return *settled;
}

class SettledHere {
 public:
  SettledHere() {
    const std::scoped_lock lock(TheSettled().lock);
    changes_ = TheSettled().changes;
    if (OnMadeThread()) ++TheSettled().threads;
  }
  ~SettledHere() {
    const std::scoped_lock lock(TheSettled().lock);
    if (OnMadeThread() && changes_ == TheSettled().changes) --TheSettled().threads;
  }
  SettledHere(const SettledHere&) = delete;
  SettledHere& operator=(const SettledHere&) = delete;

 private:
  std::uint64_t changes_;
};

// The system clock, because waits on it are pthread_cond_timedwait, which ThreadSanitizer knows.
using Clock = std::chrono::system_clock;
constexpr auto kPollEvery = std::chrono::milliseconds(2);
constexpr std::uint64_t kLongestNs = 1'000'000'000'000'000'000;  // 30 years; keeps the deadline in range

std::condition_variable& Changed() {
  static auto* changed = new std::condition_variable;  // threads may still wait while the process ends
  return *changed;
}

int ReadyObject(std::span<Waitable* const> objects, bool all) {
  const auto signalled = [](Waitable* object) { return object->Signalled(); };
  if (all) {
    if (!std::ranges::all_of(objects, signalled)) return kWaitTimedOut;
    for (Waitable* object : objects) object->Consume();
    return 0;
  }
  const auto ready = std::ranges::find_if(objects, signalled);
  if (ready == objects.end()) return kWaitTimedOut;
  (*ready)->Consume();
  return static_cast<int>(ready - objects.begin());
}

}  // namespace

std::mutex& WaitLock() {
  static auto* lock = new std::mutex;
  return *lock;
}

void WakeWaiters() {
  {
    const std::scoped_lock lock(TheSettled().lock);
    ++TheSettled().changes;
    TheSettled().threads = 0;
  }
  Changed().notify_all();
}

int SettledThreads() {
  const std::scoped_lock lock(TheSettled().lock);
  return TheSettled().threads;
}

int WaitForObjects(std::span<Waitable* const> objects, bool all, std::uint64_t real_ns,
                   const std::function<bool()>& also) {
  const bool forever = real_ns == UINT64_MAX;
  const auto deadline = Clock::now() + std::chrono::nanoseconds(std::min(real_ns, kLongestNs));
  const bool polled = std::ranges::any_of(objects, [](Waitable* object) { return object->Polled(); });
  std::unique_lock lock(WaitLock());
  for (;;) {
    if (!objects.empty()) {
      if (const int ready = ReadyObject(objects, all); ready != kWaitTimedOut) return ready;
    }
    if (also && also()) return static_cast<int>(objects.size());
    const auto now = Clock::now();
    if (!forever && now >= deadline) return kWaitTimedOut;
    const SettledHere settled;
    if (polled) {
      Changed().wait_until(lock, forever ? now + kPollEvery : std::min(deadline, now + kPollEvery));
    } else if (forever) {
      Changed().wait(lock);
    } else {
      Changed().wait_until(lock, deadline);
    }
  }
}

bool Waitable::Wait(std::uint64_t real_ns) {
  Waitable* self = this;
  return WaitForObjects({&self, 1}, false, real_ns) != kWaitTimedOut;
}

std::uint64_t WaitNs(DWORD milliseconds) { return milliseconds == INFINITE ? UINT64_MAX : RealWaitNs(milliseconds); }

}  // namespace winhost
