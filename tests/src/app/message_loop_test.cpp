#include "app/message_loop.h"

#include "tests/support/machine_fixture.h"

namespace {

constexpr UINT kEaten = WM_APP + 1;

class MessageLoopTest : public testing_support::OnMachine, public vanta::MessageFilter, public vanta::IdleHandler {
 protected:
  bool PreTranslateMessage(MSG* message) override {
    seen_.push_back(message->message);
    return message->message == kEaten;
  }
  void OnIdle() override {
    ++idles_;
    if (queue_.empty()) return PostQuitMessage(7);
    PostThreadMessageW(GetCurrentThreadId(), queue_.front(), 0, 0);
    queue_.erase(queue_.begin());
  }

  std::vector<UINT> seen_;
  std::vector<UINT> queue_;
  int idles_ = 0;
};

TEST_F(MessageLoopTest, RunsUntilQuitAndGivesItsCode) {
  Start();
  vanta::MessageLoop loop;
  loop.AddFilter(this);
  loop.AddIdleHandler(this);
  queue_ = {kEaten, WM_APP + 2};
  EXPECT_EQ(loop.Run(), 7u);
  EXPECT_EQ(seen_, (std::vector<UINT>{kEaten, WM_APP + 2}));
  EXPECT_EQ(idles_, 3);
}

TEST_F(MessageLoopTest, MouseMovesDoNotRearmIdleWork) {
  Start();
  vanta::MessageLoop loop;
  loop.AddIdleHandler(this);
  PostThreadMessageW(GetCurrentThreadId(), WM_MOUSEMOVE, 0, 0);
  PostThreadMessageW(GetCurrentThreadId(), WM_APP, 0, 0);
  // The first idle time comes after WM_APP; that handler ends the loop.
  EXPECT_EQ(loop.Run(), 7u);
  EXPECT_EQ(idles_, 1);
}

TEST_F(MessageLoopTest, LoopIsRegisteredForItsThreadWhileItLives) {
  EXPECT_EQ(vanta::MessageLoop::Current(), nullptr);
  {
    vanta::MessageLoop loop;
    EXPECT_EQ(vanta::MessageLoop::Current(), &loop);
  }
  EXPECT_EQ(vanta::MessageLoop::Current(), nullptr);
}

}  // namespace
