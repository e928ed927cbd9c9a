#include <windows.h>

#include <algorithm>

#include "winhost/machine/clock.h"
#include "winhost/machine/faults.h"
#include "winhost/machine/machine.h"
#include "winhost/machine/text.h"

namespace {

constexpr ULONGLONG kTicksAMillisecond = 10'000;
constexpr ULONGLONG kTicksASecond = 10'000'000;
constexpr LONGLONG kTicksAMinute = 600'000'000;
constexpr ULONGLONG kTicksADay = 864'000'000'000;
constexpr ULONGLONG kLatest = 0x7FFFFFFFFFFFFFFF;  // above it Windows reads a negative number
constexpr LONGLONG kDaysTo1970From1601 = 134'774;

ULONGLONG Ticks(const FILETIME& time) {
  return (static_cast<ULONGLONG>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
}
FILETIME ToFileTime(ULONGLONG ticks) { return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)}; }

BOOL Fail(DWORD error) {
  SetLastError(error);
  return FALSE;
}

// Days since 1970 of a date in the proleptic Gregorian calendar; a year begins in March, so that the leap day ends it.
LONGLONG DaysFromDate(LONGLONG year, unsigned month, unsigned day) {
  if (month <= 2) --year;
  const LONGLONG era = year / 400;
  const LONGLONG year_of_era = year - era * 400;
  const LONGLONG day_of_year = (153 * (static_cast<LONGLONG>(month) + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  return era * 146'097 + year_of_era * 365 + year_of_era / 4 - year_of_era / 100 + day_of_year - 719'468;
}

void DateFromDays(LONGLONG days, SYSTEMTIME* time) {
  days += 719'468;
  const LONGLONG era = days / 146'097;
  const LONGLONG day_of_era = days - era * 146'097;
  const LONGLONG year_of_era = (day_of_era - day_of_era / 1460 + day_of_era / 36'524 - day_of_era / 146'096) / 365;
  const LONGLONG day_of_year = day_of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
  const LONGLONG shifted_month = (5 * day_of_year + 2) / 153;
  time->wDay = static_cast<WORD>(day_of_year - (153 * shifted_month + 2) / 5 + 1);
  time->wMonth = static_cast<WORD>(shifted_month < 10 ? shifted_month + 3 : shifted_month - 9);
  time->wYear = static_cast<WORD>(year_of_era + era * 400 + (time->wMonth <= 2 ? 1 : 0));
}

unsigned DaysInMonth(unsigned year, unsigned month) {
  static constexpr unsigned kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
  return month == 2 && leap ? 29 : kDays[month - 1];
}

bool IsValid(const SYSTEMTIME& time) {
  return time.wYear >= 1601 && time.wYear <= 30'827 && time.wMonth >= 1 && time.wMonth <= 12 && time.wDay >= 1 &&
         time.wDay <= DaysInMonth(time.wYear, time.wMonth) && time.wHour < 24 && time.wMinute < 60 &&
         time.wSecond < 60 && time.wMilliseconds < 1000;
}

void Split(ULONGLONG ticks, SYSTEMTIME* time) {
  const ULONGLONG days = ticks / kTicksADay;
  const ULONGLONG of_day = ticks % kTicksADay / kTicksAMillisecond;
  DateFromDays(static_cast<LONGLONG>(days) - kDaysTo1970From1601, time);
  time->wDayOfWeek = static_cast<WORD>((days + 1) % 7);  // 1601 began on a Monday
  time->wMilliseconds = static_cast<WORD>(of_day % 1000);
  time->wSecond = static_cast<WORD>(of_day / 1000 % 60);
  time->wMinute = static_cast<WORD>(of_day / 60'000 % 60);
  time->wHour = static_cast<WORD>(of_day / 3'600'000);
}

LONG MachineBias() { return winhost::Machine::Current().facts().zone_bias_minutes; }

// False when the result would lie before 1601 or too late.
bool Shift(ULONGLONG ticks, LONGLONG minutes, ULONGLONG* shifted) {
  const LONGLONG by = minutes * kTicksAMinute;
  if (ticks > kLatest || (by < 0 && ticks < static_cast<ULONGLONG>(-by))) return false;
  *shifted = ticks + static_cast<ULONGLONG>(by);
  return *shifted <= kLatest;
}

BOOL ShiftFileTime(const FILETIME* from, LONGLONG minutes, LPFILETIME to) {
  ULONGLONG shifted;
  if (!Shift(Ticks(*from), minutes, &shifted)) return Fail(ERROR_INVALID_PARAMETER);
  *to = ToFileTime(shifted);
  return TRUE;
}

BOOL ShiftSystemTime(const SYSTEMTIME* from, LONGLONG minutes, LPSYSTEMTIME to) {
  FILETIME time;
  return SystemTimeToFileTime(from, &time) && ShiftFileTime(&time, minutes, &time) && FileTimeToSystemTime(&time, to);
}

LONGLONG BiasOf(const TIME_ZONE_INFORMATION* zone) { return zone ? zone->Bias + zone->StandardBias : MachineBias(); }

}  // namespace

void GetSystemTimeAsFileTime(LPFILETIME time) { *time = ToFileTime(winhost::MachineTime100ns()); }

void GetSystemTime(LPSYSTEMTIME time) { Split(winhost::MachineTime100ns(), time); }

void GetLocalTime(LPSYSTEMTIME time) {
  ULONGLONG local = winhost::MachineTime100ns();
  Shift(local, -MachineBias(), &local);
  Split(local, time);
}

DWORD GetTickCount() { return static_cast<DWORD>(winhost::MachineTicksMs()); }

BOOL QueryPerformanceFrequency(LARGE_INTEGER* frequency) {
  frequency->QuadPart = static_cast<LONGLONG>(kTicksASecond);
  return TRUE;
}

BOOL QueryPerformanceCounter(LARGE_INTEGER* count) {
  count->QuadPart = static_cast<LONGLONG>(winhost::MachineTime100ns());
  return TRUE;
}

DWORD GetTimeZoneInformation(LPTIME_ZONE_INFORMATION zone) {
  *zone = {};
  zone->Bias = MachineBias();
  std::copy_n(u"Standard", 9, zone->StandardName);
  std::copy_n(u"Daylight", 9, zone->DaylightName);
  return TIME_ZONE_ID_UNKNOWN;
}

BOOL SystemTimeToTzSpecificLocalTime(const TIME_ZONE_INFORMATION* zone, const SYSTEMTIME* utc, LPSYSTEMTIME local) {
  return ShiftSystemTime(utc, -BiasOf(zone), local);
}

BOOL TzSpecificLocalTimeToSystemTime(const TIME_ZONE_INFORMATION* zone, const SYSTEMTIME* local, LPSYSTEMTIME utc) {
  return ShiftSystemTime(local, BiasOf(zone), utc);
}

BOOL SystemTimeToFileTime(const SYSTEMTIME* time, LPFILETIME file_time) {
  if (!IsValid(*time)) return Fail(ERROR_INVALID_PARAMETER);
  const LONGLONG days = DaysFromDate(time->wYear, time->wMonth, time->wDay) + kDaysTo1970From1601;
  const ULONGLONG of_day = ((time->wHour * 60ull + time->wMinute) * 60 + time->wSecond) * 1000 + time->wMilliseconds;
  *file_time = ToFileTime(static_cast<ULONGLONG>(days) * kTicksADay + of_day * kTicksAMillisecond);
  return TRUE;
}

BOOL FileTimeToSystemTime(const FILETIME* file_time, LPSYSTEMTIME time) {
  if (Ticks(*file_time) > kLatest) return Fail(ERROR_INVALID_PARAMETER);
  Split(Ticks(*file_time), time);
  return TRUE;
}

LONG CompareFileTime(const FILETIME* a, const FILETIME* b) {
  const ULONGLONG first = Ticks(*a), second = Ticks(*b);
  return first < second ? -1 : first > second ? 1 : 0;
}

BOOL FileTimeToLocalFileTime(const FILETIME* utc, LPFILETIME local) {
  return ShiftFileTime(utc, -MachineBias(), local);
}

BOOL LocalFileTimeToFileTime(const FILETIME* local, LPFILETIME utc) { return ShiftFileTime(local, MachineBias(), utc); }

BOOL DosDateTimeToFileTime(WORD date, WORD time, LPFILETIME file_time) {
  SYSTEMTIME split{};
  split.wYear = static_cast<WORD>(1980 + (date >> 9));
  split.wMonth = static_cast<WORD>((date >> 5) & 15);
  split.wDay = static_cast<WORD>(date & 31);
  split.wHour = static_cast<WORD>(time >> 11);
  split.wMinute = static_cast<WORD>((time >> 5) & 63);
  split.wSecond = static_cast<WORD>((time & 31) * 2);
  return SystemTimeToFileTime(&split, file_time);
}

BOOL FileTimeToDosDateTime(const FILETIME* file_time, LPWORD date, LPWORD time) {
  SYSTEMTIME split;
  if (!FileTimeToSystemTime(file_time, &split)) return FALSE;
  if (split.wYear < 1980 || split.wYear > 2107) return Fail(ERROR_INVALID_PARAMETER);
  *date = static_cast<WORD>(((split.wYear - 1980) << 9) | (split.wMonth << 5) | split.wDay);
  *time = static_cast<WORD>((split.wHour << 11) | (split.wMinute << 5) | (split.wSecond / 2));
  return TRUE;
}
