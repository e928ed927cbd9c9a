// One queued report, and when it is tried again.
#pragma once

#include "base/text.h"

namespace vanta {

struct RequestRecord {
  String a, b, c, d, e, f, g;
  String extra;  // more of a query, "name=value&…"
  String status;
  bool retry = false;
  DWORD retry_count = 0;  // how often it was tried again
  DWORD delay = 0;        // milliseconds before the last of these
};

// After a failure: whether the report is to be tried again, and then after `record->delay` milliseconds: 5 minutes the
// first time, 5 more each further time, three times in all. Pure.
bool PlanRetry(RequestRecord* record);

}  // namespace vanta
