// File times of an entry, from its DOS date and time and the "UT" block of its local extra field.
#pragma once

#include <windows.h>

#include <span>

namespace vanta {

struct EntryTimes {  // UTC
  FILETIME modification;
  FILETIME access;
  FILETIME creation;
};

// DOS times are local: UTC = local + bias. An impossible DOS date gives zero times. The first "UT" block replaces those
// times that its flags name and that lie wholly inside it.
EntryTimes TimesFrom(WORD dos_date, WORD dos_time, LONG bias_minutes, std::span<const BYTE> local_extra);

// The bias with which this system converts local file times at present.
LONG LocalBiasMinutes();

}  // namespace vanta
