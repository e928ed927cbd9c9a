// The install statistics' sender: reports are queued and sent one after the other by a thread of its own.
//
// Nothing is probed, started or sent before the first PostStatus.
#pragma once

#include "base/lock.h"
#include "base/text.h"
#include "base/unique.h"
#include "report/stats/report_parameters.h"
#include "report/stats/request_record.h"
#include "report/stats/retry_timers.h"
#include "report/stats/thread_base.h"

#include <atomic>
#include <deque>

namespace vanta {

// Who speaks in the log for the sender.
inline constexpr const WCHAR* kStatisticsLogTag = TEXT("CVantaHttpLog");

class CVantaHttpLog : public thread_base, private RetryTarget {
 public:
  // The one sender, made on first use and kept until the process ends. Any thread.
  static CVantaHttpLog& Instance();

  CVantaHttpLog() = default;
  // Ends the thread after the report that it is sending; what is queued or waits for a retry is lost.
  ~CVantaHttpLog() override;

  void SetUseWinInet(bool use);
  // Override the channels that the registry gives.
  void SetChannel(const String& channel);
  void SetSecondChannel(const String& channel);
  void SetVersion(const String& version);

  // Queues one report and returns; `status` is "0" (first installation), "1" (over an earlier one) or "2" (upgrade).
  // With `retry` a report that fails is tried again up to three times. The first call starts the thread and fills the
  // report parameters on the calling thread. False when the report was not queued, because there is no thread for it.
  // Any thread.
  bool PostStatus(const String& status, bool retry);

  // Sends the install report to the endpoint, a URL, and waits for the answer: a dead server holds the caller up for
  // about 10 seconds at most. False when nothing arrived. Any thread.
  bool SendInstallReport(const String& endpoint);

  // The last step of the process: gives a sender that is at work 3 seconds, once.
  void WaitBeforeExit();

  // Neither idle nor stopped.
  bool IsBusy() const;

 private:
  // Any other word ends the thread.
  enum State : LONG { kWork = 0, kIdle = 1, kStopped = 2 };

  void Probe();
  bool Queue(const RequestRecord& record);
  void TryAgain(const RequestRecord& record) override;
  void Run() override;
  bool TakeNext(RequestRecord* record);
  void Send(RequestRecord record);
  ReportParameters Parameters();

  std::atomic<LONG> state_{kIdle};
  UniqueHandle wake_{CreateEventW(nullptr, FALSE, FALSE, nullptr)};
  Once probed_;
  Once started_;
  CriticalSection lock_;  // of all that follows
  bool use_win_inet_ = false;
  ReportParameters parameters_;
  std::deque<RequestRecord> queue_;
};

}  // namespace vanta
