#include "report/stats/http_log.h"

namespace vanta {
namespace {

constinit Lazy<CVantaHttpLog> sender;

}  // namespace

CVantaHttpLog& CVantaHttpLog::Instance() { return sender.Get(); }

void CVantaHttpLog::SetUseWinInet(bool use) {
  const Guard guard(lock_);
  use_win_inet_ = use;
}

void CVantaHttpLog::SetChannel(const String& channel) {
  const Guard guard(lock_);
  channel_ = channel;
}

void CVantaHttpLog::SetSecondChannel(const String& channel) {
  const Guard guard(lock_);
  second_channel_ = channel;
}

void CVantaHttpLog::SetVersion(const String& version) {
  const Guard guard(lock_);
  version_ = version;
}

bool CVantaHttpLog::PostStatus(const String&, bool) { return false; }

bool CVantaHttpLog::SendInstallReport(const String&) { return false; }

void CVantaHttpLog::WaitBeforeExit() {}

}  // namespace vanta
