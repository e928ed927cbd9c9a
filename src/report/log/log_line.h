// How a log line looks; no files, no clock.
#pragma once

#include "base/text.h"

namespace vanta {

inline constexpr size_t kLogMessageLimit = 4095;  // characters

// "%s [%s] %s\r\n" of time, tag and message, the message cut at kLogMessageLimit characters.
String LogLine(StringView time, StringView tag, StringView message);

// "YYYY-MM-DD hh:mm:ss"; empty when the fields are no time of day.
String LogTime(const SYSTEMTIME& local);

// An empty filter passes everything; another passes the tags that occur in it, case-sensitively. `tag` may be null.
bool LogFilterPasses(StringView filter, const WCHAR* tag);

}  // namespace vanta
