// The trigger of the older scheduler.
#pragma once

#include <windows.h>
#include <ole2.h>
#include <mstask.h>

namespace vanta {

// Daily from `start` on (seconds dropped), every 60 minutes for 1,200 minutes each day, without an end. Pure.
TASK_TRIGGER DailyTrigger(const SYSTEMTIME& start);

}  // namespace vanta
