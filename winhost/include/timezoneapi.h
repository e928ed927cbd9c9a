// System times and their conversions. The zone is the machine's one bias (UTC = local + bias), without daylight time.
#pragma once

#include <windef.h>
#include <minwinbase.h>

#define TIME_ZONE_ID_INVALID ((DWORD)0xffffffff)
#define TIME_ZONE_ID_UNKNOWN 0

struct TIME_ZONE_INFORMATION {
  LONG Bias;
  WCHAR StandardName[32];
  SYSTEMTIME StandardDate;
  LONG StandardBias;
  WCHAR DaylightName[32];
  SYSTEMTIME DaylightDate;
  LONG DaylightBias;
};
using LPTIME_ZONE_INFORMATION = TIME_ZONE_INFORMATION*;

DWORD WINAPI GetTimeZoneInformation(LPTIME_ZONE_INFORMATION zone);
// A null zone is the machine's own.
BOOL WINAPI SystemTimeToTzSpecificLocalTime(const TIME_ZONE_INFORMATION* zone, const SYSTEMTIME* utc,
                                            LPSYSTEMTIME local);
BOOL WINAPI TzSpecificLocalTimeToSystemTime(const TIME_ZONE_INFORMATION* zone, const SYSTEMTIME* local,
                                            LPSYSTEMTIME utc);
BOOL WINAPI SystemTimeToFileTime(const SYSTEMTIME* time, LPFILETIME file_time);
BOOL WINAPI FileTimeToSystemTime(const FILETIME* file_time, LPSYSTEMTIME time);
