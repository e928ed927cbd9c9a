#include "report/stats/http_log.h"

#include "base/deployment.h"
#include "report/log/logger.h"
#include "report/stats/report_transport.h"
#include "report/stats/report_url.h"

namespace vanta {
namespace {

constexpr DWORD kGrace = 3000;  // ms

constinit Lazy<CVantaHttpLog> sender;

}  // namespace

CVantaHttpLog& CVantaHttpLog::Instance() { return sender.Get(); }

CVantaHttpLog::~CVantaHttpLog() {
  DropRetries(this);
  state_ = kStopped;
  SetEvent(wake_.Get());
  JoinThread();
  DropRetries(this);  // of the report that was under way
}

void CVantaHttpLog::SetUseWinInet(bool use) {
  const Guard guard(lock_);
  use_win_inet_ = use;
}

void CVantaHttpLog::SetChannel(const String& channel) {
  const Guard guard(lock_);
  parameters_.channel_override = channel;
}

void CVantaHttpLog::SetSecondChannel(const String& channel) {
  const Guard guard(lock_);
  parameters_.second_channel_override = channel;
}

void CVantaHttpLog::SetVersion(const String& version) {
  const Guard guard(lock_);
  parameters_.version = version;
}

bool CVantaHttpLog::PostStatus(const String& status, bool retry) {
  Probe();
  started_.Run([this] {
    if (!wake_ || !StartThread()) state_ = kStopped;
  });
  RequestRecord record;
  record.status = status;
  record.retry = retry;
  return Queue(record);
}

bool CVantaHttpLog::SendInstallReport(const String& endpoint) {
  Probe();
  return SendThroughWinInetPromptly(InstallReportUrl(endpoint, Parameters()));
}

void CVantaHttpLog::WaitBeforeExit() {
  if (IsBusy()) Sleep(kGrace);
}

bool CVantaHttpLog::IsBusy() const {
  const LONG state = state_;
  return state != kIdle && state != kStopped;
}

// The probes take their time and call out, so they run outside the lock.
void CVantaHttpLog::Probe() {
  probed_.Run([this] {
    ReportParameters probed;
    ProbeReportParameters(&probed);
    const Guard guard(lock_);
    probed.channel_override = parameters_.channel_override;
    probed.second_channel_override = parameters_.second_channel_override;
    probed.version = parameters_.version;
    parameters_ = probed;
  });
}

bool CVantaHttpLog::Queue(const RequestRecord& record) {
  {
    const Guard guard(lock_);
    if (state_ != kWork && state_ != kIdle) return false;
    queue_.push_back(record);
    state_ = kWork;
  }
  SetEvent(wake_.Get());
  return true;
}

void CVantaHttpLog::TryAgain(const RequestRecord& record) { Queue(record); }

void CVantaHttpLog::Run() {
  for (;;) {
    switch (state_) {
      case kWork: {
        RequestRecord record;
        if (TakeNext(&record)) Send(record);
        break;
      }
      case kIdle:
        WaitForSingleObject(wake_.Get(), INFINITE);
        break;
      default:
        return;
    }
  }
}

// Turning idle under the queue's lock: a report that comes now either is seen here or sets the state back to work.
bool CVantaHttpLog::TakeNext(RequestRecord* record) {
  const Guard guard(lock_);
  if (queue_.empty()) {
    LONG expected = kWork;
    state_.compare_exchange_strong(expected, kIdle);
    return false;
  }
  *record = queue_.front();
  queue_.pop_front();
  return true;
}

void CVantaHttpLog::Send(RequestRecord record) {
  const String url = StatisticsUrl(GetDeployment().statistics_host, Parameters(), record);
  bool use_win_inet = false;
  {
    const Guard guard(lock_);
    use_win_inet = use_win_inet_;
  }
  const bool sent = use_win_inet ? SendThroughWinInet(url) : SendThroughNetworkLibrary(url);
  Log(kStatisticsLogTag, TEXT("%s"), url);
  if (!sent && PlanRetry(&record)) StartRetryTimer(this, record);
}

ReportParameters CVantaHttpLog::Parameters() {
  const Guard guard(lock_);
  return parameters_;
}

}  // namespace vanta
