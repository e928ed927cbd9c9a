#include "winhost/machine/clock.h"

#include <time.h>

#include <cstdio>

#include "winhost/machine/machine.h"
#include "winhost/machine/shared.h"

namespace winhost {
namespace {

constexpr std::uint64_t kUnixEpoch100ns = 116444736000000000ull;
constexpr std::uint64_t kWaitGraceNs = 20'000'000;  // for other threads, before a standing clock calls a wait timed out

std::uint64_t RealNs() {
  timespec now;
  clock_gettime(CLOCK_REALTIME, &now);
  return static_cast<std::uint64_t>(now.tv_sec) * 1'000'000'000ull + static_cast<std::uint64_t>(now.tv_nsec);
}

void SleepRealNs(std::uint64_t ns) {
  timespec rest{static_cast<time_t>(ns / 1'000'000'000ull), static_cast<long>(ns % 1'000'000'000ull)};
  while (nanosleep(&rest, &rest) != 0) {
  }
}

class Clock {
 public:
  explicit Clock(Machine& machine) : facts_(machine.facts().clock), block_(machine.Get<SharedMemory>().block()) {
    std::uint64_t none = 0;
    block_.clock_origin_real_ns.compare_exchange_strong(none, RealNs());
    const std::uint64_t origin = block_.clock_origin_real_ns.load();
    start_100ns_ = facts_.at.empty() ? kUnixEpoch100ns + origin / 100 : ParseLocal(machine.facts());
  }

  std::uint64_t Now100ns() const { return start_100ns_ + Elapsed100ns(); }

  std::uint64_t Elapsed100ns() const {
    std::uint64_t elapsed = block_.clock_advance_100ns.load(std::memory_order_relaxed);
    if (!facts_.stands) {
      const double real = static_cast<double>(RealNs() - block_.clock_origin_real_ns.load(std::memory_order_relaxed));
      elapsed += static_cast<std::uint64_t>(real / 100 * facts_.speed);
    }
    return elapsed;
  }

  void Sleep(std::uint64_t ms) const {
    if (facts_.stands) {
      Advance(ms);
    } else {
      SleepRealNs(static_cast<std::uint64_t>(static_cast<double>(ms) * 1e6 / facts_.speed));
    }
  }

  std::uint64_t RealWait(std::uint32_t ms) const {
    if (facts_.stands) return ms == 0 ? 0 : kWaitGraceNs;
    return static_cast<std::uint64_t>(static_cast<double>(ms) * 1e6 / facts_.speed);
  }

  void Advance(std::uint64_t ms) const { block_.clock_advance_100ns.fetch_add(ms * 10'000); }
  bool stands() const { return facts_.stands; }

 private:
  static std::uint64_t ParseLocal(const Facts& facts) {
    int year = 1601, month = 1, day = 1, hour = 0, minute = 0, second = 0, milli = 0;
    std::sscanf(facts.clock.at.c_str(), "%d-%d-%dT%d:%d:%d.%d", &year, &month, &day, &hour, &minute, &second, &milli);
    tm broken{};
    broken.tm_year = year - 1900;
    broken.tm_mon = month - 1;
    broken.tm_mday = day;
    broken.tm_hour = hour;
    broken.tm_min = minute;
    broken.tm_sec = second;
    const std::int64_t unix_seconds = timegm(&broken) + facts.zone_bias_minutes * 60ll;
    return static_cast<std::uint64_t>(static_cast<std::int64_t>(kUnixEpoch100ns) + unix_seconds * 10'000'000) +
           static_cast<std::uint64_t>(milli) * 10'000;
  }

  const ClockFacts& facts_;
  SharedBlock& block_;
  std::uint64_t start_100ns_;
};

Clock& ClockOf(Machine& machine) { return machine.Get<Clock>(); }
Clock& TheClock() { return ClockOf(Machine::Current()); }

}  // namespace

std::uint64_t MachineTime100ns() { return TheClock().Now100ns(); }
// A machine that has been up for a day looks plausible, and differences are what callers use.
std::uint64_t MachineTicksMs(Machine& machine) { return 86'400'000 + ClockOf(machine).Elapsed100ns() / 10'000; }
std::uint64_t MachineTicksMs() { return MachineTicksMs(Machine::Current()); }
bool MachineClockStands() { return TheClock().stands(); }
void MachineSleepMs(std::uint64_t ms) { TheClock().Sleep(ms); }
std::uint64_t RealWaitNs(Machine& machine, std::uint32_t ms) { return ClockOf(machine).RealWait(ms); }
std::uint64_t RealWaitNs(std::uint32_t ms) { return RealWaitNs(Machine::Current(), ms); }
void PassWaitedMs(std::uint32_t ms) {
  if (TheClock().stands()) TheClock().Advance(ms);
}
void AdvanceMachineClock(std::uint64_t ms) { TheClock().Advance(ms); }

}  // namespace winhost
