// The install statistics' sender. Reporting transport is off in this build: the settings are kept, nothing is queued
// and nothing is sent, and the calls that would send say so by their result.
#pragma once

#include "base/lock.h"
#include "base/text.h"

namespace vanta {

class CVantaHttpLog {
 public:
  // The one sender, made on first use. Any thread.
  static CVantaHttpLog& Instance();

  void SetUseWinInet(bool use);
  // Override the channels that the registry gives.
  void SetChannel(const String& channel);
  void SetSecondChannel(const String& channel);
  void SetVersion(const String& version);

  // Queues one report; `status` is "0" (first installation), "1" (over an earlier one) or "2" (upgrade). False when it
  // was not queued.
  bool PostStatus(const String& status, bool retry);
  // Sends the install report to `path` on the upgrade host and waits for the answer. False when nothing arrived.
  bool SendInstallReport(const String& path);
  // Gives a busy sender its grace time at the end of the process.
  void WaitBeforeExit();

 private:
  CriticalSection lock_;
  bool use_win_inet_ = false;
  String channel_;
  String second_channel_;
  String version_;
};

}  // namespace vanta
