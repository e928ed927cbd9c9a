#include "report/stats/retry_timers.h"

#include <mmsystem.h>

#include <map>

#include "base/lock.h"

namespace vanta {
namespace {

constexpr UINT kResolution = 10;  // ms

struct WaitingReport {
  RetryTarget* target;
  RequestRecord record;
};

struct WaitingReports {
  CriticalSection lock;
  std::map<UINT, WaitingReport> by_timer;
};
constinit Lazy<WaitingReports> waiting;

// The target is called under the lock, which is what lets DropRetries promise that nothing comes after it.
void CALLBACK TimeHasCome(UINT timer, UINT, DWORD_PTR, DWORD_PTR, DWORD_PTR) {
  timeKillEvent(timer);
  WaitingReports& all = waiting.Get();
  const Guard guard(all.lock);
  const auto found = all.by_timer.find(timer);
  if (found == all.by_timer.end()) return;
  const WaitingReport report = found->second;
  all.by_timer.erase(found);
  report.target->TryAgain(report.record);
}

}  // namespace

bool StartRetryTimer(RetryTarget* target, const RequestRecord& record) {
  WaitingReports& all = waiting.Get();
  // Held over both steps: the timer may come before its number is in the table.
  const Guard guard(all.lock);
  const UINT timer = timeSetEvent(record.delay, kResolution, TimeHasCome, 0, TIME_ONESHOT | TIME_CALLBACK_FUNCTION);
  if (!timer) return false;
  all.by_timer.insert_or_assign(timer, WaitingReport{target, record});
  return true;
}

void DropRetries(RetryTarget* target) {
  WaitingReports& all = waiting.Get();
  const Guard guard(all.lock);
  for (auto at = all.by_timer.begin(); at != all.by_timer.end();) {
    if (at->second.target != target) {
      ++at;
      continue;
    }
    timeKillEvent(at->first);
    at = all.by_timer.erase(at);
  }
}

}  // namespace vanta
