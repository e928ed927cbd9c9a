#include "lumo/core/timer_queue.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace lumo {
namespace {

struct Owner : WeakBase {
  ~Owner() override = default;
};

class TimerQueueTest : public testing::Test {
 protected:
  TimerId Add(char mark, LONGLONG interval, int repeat = kEndless) {
    return queue_.Add(owner_->ShareLiveness(), now_, interval, repeat, [this, mark] { ran_ += mark; });
  }
  std::string RunAt(LONGLONG now) {
    now_ = now;
    ran_.clear();
    queue_.RunDue(now);
    return ran_;
  }

  LONGLONG now_ = 0;
  std::string ran_;
  std::unique_ptr<Owner> owner_ = std::make_unique<Owner>();
  TimerQueue queue_;
};

TEST_F(TimerQueueTest, RunsInOrderOfDueTimeAndNotBefore) {
  Add('b', 20);
  Add('a', 10, 1);
  EXPECT_EQ(queue_.NextDue(), 10);
  EXPECT_EQ(RunAt(9), "");
  EXPECT_EQ(RunAt(20), "ab");
  EXPECT_EQ(queue_.NextDue(), 40);
}

TEST_F(TimerQueueTest, RepeatsAsOftenAsAskedAndMakesNoTurnUp) {
  Add('x', 10, 2);
  EXPECT_EQ(RunAt(35), "x");
  EXPECT_EQ(RunAt(36), "x");
  EXPECT_EQ(RunAt(100), "");
  EXPECT_EQ(queue_.Count(), 0u);
  EXPECT_EQ(queue_.NextDue(), std::nullopt);
}

TEST_F(TimerQueueTest, DropsTimersOfAnOwnerThatIsGone) {
  Add('x', 10);
  owner_.reset();
  EXPECT_EQ(RunAt(10), "");
  EXPECT_EQ(queue_.Count(), 0u);
}

TEST_F(TimerQueueTest, CallbackMayRemoveItsOwnTimerAndTheNextOne) {
  TimerId first = 0, second = 0;
  first = queue_.Add(owner_->ShareLiveness(), 0, 10, kEndless, [&] {
    ran_ += 'x';
    queue_.Remove(first);
    queue_.Remove(second);
  });
  second = Add('y', 10);
  EXPECT_EQ(RunAt(10), "x");
  EXPECT_EQ(queue_.Count(), 0u);
}

TEST_F(TimerQueueTest, TimerAddedByACallbackWaitsForTheNextRun) {
  queue_.Add(owner_->ShareLiveness(), 0, 10, 1, [&] { Add('z', 0, 1); });
  EXPECT_EQ(RunAt(10), "");
  EXPECT_EQ(RunAt(10), "z");
}

TEST_F(TimerQueueTest, EndReleasesEveryOwner) {
  Add('x', 10);
  Add('y', 10, 1);
  queue_.Clear();
  EXPECT_EQ(queue_.Count(), 0u);
  EXPECT_EQ(RunAt(50), "");
}

}  // namespace
}  // namespace lumo
