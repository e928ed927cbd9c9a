#include "install/first_start.h"

#include "base/format.h"
#include "base/msvc_rand.h"

namespace vanta {

std::optional<SYSTEMTIME> FirstStart(const SYSTEMTIME& local, int r) {
  constexpr ULONGLONG kMinute = 600000000;  // 100 ns units
  FILETIME time = {};
  if (!SystemTimeToFileTime(&local, &time)) return std::nullopt;
  ULONGLONG ticks = ULONGLONG{time.dwHighDateTime} << 32 | time.dwLowDateTime;
  ticks += static_cast<ULONGLONG>(60 + r) * kMinute;
  time.dwLowDateTime = static_cast<DWORD>(ticks);
  time.dwHighDateTime = static_cast<DWORD>(ticks >> 32);
  SYSTEMTIME start = {};
  if (!FileTimeToSystemTime(&time, &start)) return std::nullopt;
  return start;
}

int FirstStartDelay(DWORD seed) { return MsvcRand(seed).Next() % 60; }

String StartBoundary(const SYSTEMTIME& start) {
  return Format(TEXT("%04hu-%02hu-%02huT%02hu:%02hu:%02hu"), start.wYear, start.wMonth, start.wDay, start.wHour,
                start.wMinute, start.wSecond);
}

}  // namespace vanta
