#include "tests/support/machine_fixture.h"

namespace {

using namespace testing_support;

ULONGLONG Ticks(const FILETIME& time) {
  return (static_cast<ULONGLONG>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
}
FILETIME Time(ULONGLONG ticks) { return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)}; }

class TimesTest : public OnMachine {};

TEST_F(TimesTest, SystemTimesAndFileTimesMeetOnEveryDay) {
  struct Row {
    SYSTEMTIME split;
    ULONGLONG ticks;
  } rows[] = {{{1601, 1, 1, 1, 0, 0, 0, 0}, 0},
              {{1970, 1, 4, 1, 0, 0, 0, 0}, 116444736000000000},
              {{2000, 2, 2, 29, 23, 59, 59, 999}, 125963423999990000},
              {{2024, 3, 2, 5, 14, 7, 9, 0}, 133541212290000000},
              {{30827, 12, 5, 31, 23, 59, 59, 999}, 9223149887999990000}};
  for (const Row& row : rows) {
    FILETIME time;
    SYSTEMTIME split;
    ASSERT_TRUE(SystemTimeToFileTime(&row.split, &time));
    EXPECT_EQ(Ticks(time), row.ticks);
    ASSERT_TRUE(FileTimeToSystemTime(&time, &split));
    EXPECT_EQ(memcmp(&split, &row.split, sizeof split), 0)
        << split.wYear << "-" << split.wMonth << "-" << split.wDay << " " << split.wDayOfWeek;
  }
}

TEST_F(TimesTest, ImpossibleDatesAreRefused) {
  const SYSTEMTIME rows[] = {{1600, 12, 0, 31, 0, 0, 0, 0}, {2023, 2, 0, 29, 0, 0, 0, 0}, {2024, 13, 0, 1, 0, 0, 0, 0},
                             {2024, 0, 0, 1, 0, 0, 0, 0},   {2024, 1, 0, 0, 0, 0, 0, 0},  {2024, 1, 0, 1, 24, 0, 0, 0},
                             {2024, 1, 0, 1, 0, 60, 0, 0},  {2024, 1, 0, 1, 0, 0, 60, 0}, {2100, 2, 0, 29, 0, 0, 0, 0}};
  FILETIME time;
  SYSTEMTIME split;
  for (const SYSTEMTIME& row : rows) EXPECT_FALSE(SystemTimeToFileTime(&row, &time)) << row.wYear << "-" << row.wMonth;
  time = Time(1ull << 63);
  EXPECT_FALSE(FileTimeToSystemTime(&time, &split));
  EXPECT_FALSE(DosDateTimeToFileTime(0, 0, &time)) << "month 0";
}

TEST_F(TimesTest, LocalTimeIsShiftedByTheBias) {
  Start(R"({"clock": {"at": "2024-01-01T00:30:00", "stands": true}, "zone_bias_minutes": -480})");
  SYSTEMTIME local, utc;
  GetLocalTime(&local);
  EXPECT_EQ(local.wYear * 10000 + local.wMonth * 100 + local.wDay, 20240101);
  EXPECT_EQ(local.wHour * 100 + local.wMinute, 30);
  GetSystemTime(&utc);
  EXPECT_EQ(utc.wYear * 10000 + utc.wMonth * 100 + utc.wDay, 20231231);
  EXPECT_EQ(utc.wHour * 100 + utc.wMinute, 1630);
  FILETIME now, shifted, back;
  GetSystemTimeAsFileTime(&now);
  ASSERT_TRUE(FileTimeToLocalFileTime(&now, &shifted));
  EXPECT_EQ(Ticks(shifted) - Ticks(now), 480ull * 600'000'000);
  ASSERT_TRUE(LocalFileTimeToFileTime(&shifted, &back));
  EXPECT_EQ(Ticks(back), Ticks(now));
  const FILETIME earliest = Time(1);
  EXPECT_FALSE(LocalFileTimeToFileTime(&earliest, &back)) << "would lie before 1601";
}

TEST_F(TimesTest, DosTimesHaveStepsOfTwoSeconds) {
  const WORD date = (44 << 9) | (3 << 5) | 5, time = (14 << 11) | (7 << 5) | 4;
  FILETIME file_time;
  ASSERT_TRUE(DosDateTimeToFileTime(date, time, &file_time));
  EXPECT_EQ(Ticks(file_time), 133541212280000000u);
  for (const ULONGLONG more : {0ull, 19'999'999ull, 20'000'000ull}) {
    const FILETIME later = Time(Ticks(file_time) + more);
    WORD back_date, back_time;
    ASSERT_TRUE(FileTimeToDosDateTime(&later, &back_date, &back_time));
    EXPECT_EQ(back_date, date);
    EXPECT_EQ(back_time, more < 20'000'000 ? time : time + 1) << more;
  }
  const FILETIME old = Time(116444736000000000);
  WORD ignored;
  EXPECT_FALSE(FileTimeToDosDateTime(&old, &ignored, &ignored));
}

}  // namespace
