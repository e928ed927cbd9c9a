// When the updater's task first starts: between one and two hours after the installation. Pure but for the conversions
// of the system.
#pragma once

#include "base/text.h"

#include <optional>

namespace vanta {

// `local` plus 60 + r minutes. None when `local` is no time.
std::optional<SYSTEMTIME> FirstStart(const SYSTEMTIME& local, int r);

// 0 to 59, the first number of the run-time's sequence that `seed` starts.
int FirstStartDelay(DWORD seed);

// "YYYY-MM-DDThh:mm:ss", local time without zone.
String StartBoundary(const SYSTEMTIME& start);

}  // namespace vanta
