// Numbers, times and text conversion.
#include <windows.h>

#include <stdlib.h>
#include <string.h>
#include <wchar.h>

#include "seam_check.h"

namespace {

bool MulDivRoundsHalfAway() {
  struct Row {
    int a, b, c, result;
  } rows[] = {{10, 150, 100, 15}, {7, 125, 100, 9}, {-7, 150, 100, -11}, {1, 1, 2, 1},          {-1, 1, 2, -1},
              {1, 1, -2, -1},     {1, 1, 0, -1},    {5, 1, 3, 2},        {2147483647, 2, 1, -1}};
  for (const Row& row : rows) {
    if (MulDiv(row.a, row.b, row.c) != row.result) return false;
  }
  return true;
}

bool NumbersAreReadAsFarAsTheyGo() {
  WCHAR* end = nullptr;
  const WCHAR* text = TEXT(" 12.x");
  return wcstol(text, &end, 10) == 12 && end == text + 3 && wcstol(TEXT("x"), nullptr, 10) == 0 &&
         wcstol(TEXT("99999999999"), nullptr, 10) == 2147483647;
}

bool SystemTimesRoundTrip() {
  const SYSTEMTIME leap{2024, 2, 4, 29, 23, 59, 58, 997};
  FILETIME time;
  SYSTEMTIME back;
  return SystemTimeToFileTime(&leap, &time) && FileTimeToSystemTime(&time, &back) &&
         memcmp(&leap, &back, sizeof back) == 0;
}

bool LeapDaysNeedLeapYears() {
  const SYSTEMTIME none{2023, 2, 0, 29, 0, 0, 0, 0};
  FILETIME time;
  return !SystemTimeToFileTime(&none, &time);
}

bool DosTimesCount() {
  FILETIME time;
  WORD date = 0, day_time = 0;
  return DosDateTimeToFileTime((44 << 9) | (3 << 5) | 5, (14 << 11) | (7 << 5) | 4, &time) &&
         FileTimeToDosDateTime(&time, &date, &day_time) && date == ((44 << 9) | (3 << 5) | 5) &&
         day_time == ((14 << 11) | (7 << 5) | 4) && !DosDateTimeToFileTime(0, 0, &time);
}

bool IllFormedUtf8IsReplacedOrRefused() {
  WCHAR text[8];
  return MultiByteToWideChar(CP_UTF8, 0, "a\xC3z", 3, text, 8) == 3 && text[1] == 0xFFFD &&
         MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, "a\xC3z", 3, text, 8) == 0 &&
         GetLastError() == ERROR_NO_UNICODE_TRANSLATION && MultiByteToWideChar(CP_UTF8, 0, "abc", 3, text, 2) == 0 &&
         GetLastError() == ERROR_INSUFFICIENT_BUFFER && MultiByteToWideChar(CP_UTF8, 0, "abc", -1, nullptr, 0) == 4;
}

bool ComparisonIgnoresCase() {
  return _wcsicmp(TEXT("ABC"), TEXT("abc")) == 0 && _wcsicmp(TEXT("a_"), TEXT("AB")) < 0 &&
         lstrcmpiW(TEXT("Straw"), TEXT("sTRAW")) == 0 && lstrcmpW(TEXT("a"), TEXT("A")) < 0 &&
         lstrcmpW(TEXT("A"), TEXT("b")) < 0;
}

constexpr SeamCheck kChecks[] = {
    {"MulDiv rounds half away from zero", MulDivRoundsHalfAway},
    {"wcstol reads as far as a number goes", NumbersAreReadAsFarAsTheyGo},
    {"system times and file times meet", SystemTimesRoundTrip},
    {"29 February needs a leap year", LeapDaysNeedLeapYears},
    {"DOS times", DosTimesCount},
    {"ill-formed UTF-8 is replaced, or refused on demand", IllFormedUtf8IsReplacedOrRefused},
    {"comparison without case", ComparisonIgnoresCase},
};

}  // namespace

std::span<const SeamCheck> TextChecks() { return kChecks; }
