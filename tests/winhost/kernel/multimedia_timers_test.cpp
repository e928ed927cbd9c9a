#include <windows.h>

#include <mmsystem.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "tests/support/machine_fixture.h"

namespace {

struct Seen {
  std::atomic<int> times{0};
  std::atomic<DWORD> at{0};
  std::atomic<UINT> timer{0};
  std::atomic<bool> kill{false};
  std::atomic<int> hold_ms{0};
};

void CALLBACK Note(UINT timer, UINT, DWORD_PTR user, DWORD_PTR, DWORD_PTR) {
  Seen& seen = *reinterpret_cast<Seen*>(user);
  seen.timer = timer;
  seen.at = GetTickCount();
  if (seen.hold_ms) std::this_thread::sleep_for(std::chrono::milliseconds(seen.hold_ms));
  if (seen.kill) {
    EXPECT_EQ(timeKillEvent(timer), static_cast<MMRESULT>(TIMERR_NOERROR));
  }
  ++seen.times;
}

class MultimediaTimersTest : public testing_support::OnMachine {
 protected:
  UINT Set(UINT delay, UINT flags = TIME_ONESHOT) {
    return timeSetEvent(delay, 10, Note, reinterpret_cast<DWORD_PTR>(&seen_), flags);
  }
  bool Seen(int times) {
    for (int i = 0; i < 20000 && seen_.times < times; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return seen_.times >= times;
  }
  static void RealPause() { std::this_thread::sleep_for(std::chrono::milliseconds(30)); }
  ~MultimediaTimersTest() override { timeKillEvent(last_); }

  struct Seen seen_;
  UINT last_ = 0;
};

TEST_F(MultimediaTimersTest, FastClockMakesItComeSoon) {
  Start(R"({"clock": {"at": "2024-03-05T14:00:00", "speed": 100000}})");
  const DWORD before = GetTickCount();
  const UINT timer = Set(300000);
  ASSERT_NE(timer, 0u);
  ASSERT_TRUE(Seen(1));
  EXPECT_GE(seen_.at - before, 300000u);
  EXPECT_EQ(seen_.timer, timer);
  Sleep(900000);
  EXPECT_EQ(seen_.times, 1);
  RealPause();
  EXPECT_NE(timeKillEvent(timer), static_cast<MMRESULT>(TIMERR_NOERROR));
}

TEST_F(MultimediaTimersTest, StandingClockHasToReachIt) {
  Start(R"({"clock": {"at": "2024-03-05T14:00:00", "stands": true}})");
  Set(1000);
  Sleep(999);
  RealPause();
  EXPECT_EQ(seen_.times, 0);
  Sleep(1);
  EXPECT_TRUE(Seen(1));
}

TEST_F(MultimediaTimersTest, PeriodicOneComesAgainUntilItIsKilled) {
  Start(R"({"clock": {"at": "2024-03-05T14:00:00", "stands": true}})");
  const UINT timer = Set(100, TIME_PERIODIC);
  Sleep(350);
  EXPECT_TRUE(Seen(3));
  EXPECT_EQ(timeKillEvent(timer), static_cast<MMRESULT>(TIMERR_NOERROR));
  Sleep(1000);
  RealPause();
  EXPECT_EQ(seen_.times, 3);
}

TEST_F(MultimediaTimersTest, CallbackMayKillItsOwnTimer) {
  Start(R"({"clock": {"at": "2024-03-05T14:00:00", "stands": true}})");
  seen_.kill = true;
  Set(100, TIME_PERIODIC | TIME_KILL_SYNCHRONOUS);
  Sleep(1000);
  EXPECT_TRUE(Seen(1));
  RealPause();
  EXPECT_EQ(seen_.times, 1);
}

TEST_F(MultimediaTimersTest, SynchronousKillWaitsForTheCallback) {
  Start(R"({"clock": {"at": "2024-03-05T14:00:00", "stands": true}})");
  seen_.hold_ms = 30;
  const UINT timer = Set(1, TIME_ONESHOT | TIME_KILL_SYNCHRONOUS);
  Sleep(1);
  while (seen_.timer == 0) std::this_thread::yield();
  EXPECT_EQ(timeKillEvent(timer), static_cast<MMRESULT>(TIMERR_NOERROR));
  EXPECT_EQ(seen_.times, 1);
}

TEST_F(MultimediaTimersTest, WhatCannotBeATimerIsNone) {
  Start(R"({"faults": [{"operation": "timeSetEvent"}]})");
  EXPECT_EQ(Set(0), 0u);
  EXPECT_EQ(Set(1000001), 0u);
  EXPECT_EQ(Set(10, 0x40), 0u);
  EXPECT_EQ(timeSetEvent(10, 0, nullptr, 0, TIME_ONESHOT), 0u);
  EXPECT_EQ(Set(10), 0u) << "planned";
  EXPECT_EQ(timeKillEvent(77), static_cast<MMRESULT>(MMSYSERR_INVALPARAM));
  last_ = Set(1000000);
  EXPECT_NE(last_, 0u);
}

}  // namespace
