#include "install/first_start.h"

#include "install/task_scheduler_1.h"
#include "tests/support/machine_fixture.h"

namespace {

class FirstStartTest : public testing_support::OnMachine {
 protected:
  static std::string Boundary(SYSTEMTIME local, int r) {
    const auto start = vanta::FirstStart(local, r);
    return start ? vanta::ToUtf8(vanta::StartBoundary(*start)) : "(none)";
  }
};

TEST_F(FirstStartTest, DaysMonthsAndYearsRollOver) {
  const struct {
    SYSTEMTIME local;
    int r;
    const char* boundary;
  } rows[] = {
      {{2024, 3, 0, 5, 14, 7, 9, 500}, 0, "2024-03-05T15:07:09"},
      {{2024, 3, 0, 5, 14, 7, 9, 0}, 59, "2024-03-05T16:06:09"},
      {{2024, 4, 0, 30, 23, 30, 0, 0}, 0, "2024-05-01T00:30:00"},
      {{2023, 12, 0, 31, 23, 30, 59, 999}, 59, "2024-01-01T01:29:59"},
      {{2024, 2, 0, 28, 23, 0, 0, 0}, 0, "2024-02-29T00:00:00"},
      {{2023, 2, 0, 28, 23, 0, 0, 0}, 0, "2023-03-01T00:00:00"},
      {{2023, 2, 0, 30, 23, 0, 0, 0}, 0, "(none)"},
      {{0, 0, 0, 0, 0, 0, 0, 0}, 0, "(none)"},
  };
  for (const auto& row : rows) EXPECT_EQ(Boundary(row.local, row.r), row.boundary);
}

TEST_F(FirstStartTest, DelayComesFromTheSeed) {
  EXPECT_EQ(vanta::FirstStartDelay(1), 41);
  for (const DWORD seed : {0u, 12345u, 0x7fffffffu, 0xffffffffu}) {
    EXPECT_GE(vanta::FirstStartDelay(seed), 0);
    EXPECT_LT(vanta::FirstStartDelay(seed), 60);
  }
}

TEST_F(FirstStartTest, DailyTriggerDropsTheSeconds) {
  const TASK_TRIGGER trigger = vanta::DailyTrigger({2024, 3, 2, 5, 15, 7, 9, 0});
  EXPECT_EQ(trigger.cbTriggerSize, 0x30);
  EXPECT_EQ(trigger.wBeginYear, 2024);
  EXPECT_EQ(trigger.wBeginMonth, 3);
  EXPECT_EQ(trigger.wBeginDay, 5);
  EXPECT_EQ(trigger.wStartHour, 15);
  EXPECT_EQ(trigger.wStartMinute, 7);
  EXPECT_EQ(trigger.wEndYear, 0);
  EXPECT_EQ(trigger.rgFlags, 0u);
  EXPECT_EQ(trigger.MinutesInterval, 60u);
  EXPECT_EQ(trigger.MinutesDuration, 1200u);
  EXPECT_EQ(trigger.Type.Daily.DaysInterval, 1);
}

}  // namespace
