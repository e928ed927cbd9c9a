// Reports that wait to be tried again, each with a multimedia timer of its own. One table a process; any thread.
#pragma once

#include "report/stats/request_record.h"

namespace vanta {

// Who gets a report back when its time has come; called on the timers' thread.
class RetryTarget {
 public:
  virtual void TryAgain(const RequestRecord& record) = 0;

 protected:
  ~RetryTarget() = default;
};

// Hands `record` to the target after record.delay milliseconds. False, and the report is lost, when the system has no
// timer for it.
bool StartRetryTimer(RetryTarget* target, const RequestRecord& record);

// Gives up everything that waits for this target, which is not called any more from here on.
void DropRetries(RetryTarget* target);

}  // namespace vanta
