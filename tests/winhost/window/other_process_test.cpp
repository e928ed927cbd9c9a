// The windows of another process, played by a child of this one.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <thread>
#include <utility>

#include "tests/winhost/window/window_fixture.h"

namespace {

class OtherProcessTest : public testing_support::OnMachineWithWindows {
 protected:
  ~OtherProcessTest() override {
    if (other_ == 0) return;  // ended as it should
    kill(other_, SIGKILL);
    waitpid(other_, nullptr, 0);
  }

  // Forks while this process has no window and so no second thread, which a child would not have.
  void Other(const std::function<int()>& body) {
    Start();
    other_ = fork();
    Register();
    if (other_ == 0) _exit(body());
  }
  HWND WaitForWindow(const WCHAR* title) {
    for (int i = 0; i < 5000; ++i) {
      if (const HWND window = FindWindowW(kClass, title)) return window;
      usleep(1000);
    }
    return nullptr;
  }
  int ExitCode() {
    int status = 0;
    waitpid(std::exchange(other_, 0), &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  pid_t other_ = 0;
};

// Runs until WM_USER + 2; the number of WM_USER + 1 is the exit code.
int Serve() {
  int counted = 0;
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    DispatchMessageW(&message);
    if (message.message == WM_USER + 1) ++counted;
    if (message.message == WM_USER + 2) return counted;
  }
  return -1;
}

TEST_F(OtherProcessTest, MessagesAndAnswersCrossOver) {
  Other([] { return Create(WS_POPUP, u"far") ? Serve() : -1; });
  const HWND far = WaitForWindow(u"far");
  ASSERT_TRUE(far);
  DWORD process = 0;
  EXPECT_NE(GetWindowThreadProcessId(far, &process), GetCurrentThreadId());
  EXPECT_EQ(process, static_cast<DWORD>(other_));
  EXPECT_EQ(SendMessageW(far, WM_USER + 7, 40, 2), 42);
  for (int i = 0; i < 100; ++i) ASSERT_TRUE(PostMessageW(far, WM_USER + 1, 0, 0));
  EXPECT_TRUE(ShowWindow(far, SW_SHOW) == FALSE && SetForegroundWindow(far));
  EXPECT_EQ(GetForegroundWindow(), far);
  EXPECT_FALSE(DestroyWindow(far));
  EXPECT_EQ(GetLastError(), DWORD{ERROR_ACCESS_DENIED});
  PostMessageW(far, WM_USER + 2, 0, 0);
  EXPECT_EQ(ExitCode(), 100);
  EXPECT_FALSE(IsWindow(far));
}

TEST_F(OtherProcessTest, AKilledProcessTakesItsWindowsWithIt) {
  Other([] {
    Create(WS_POPUP, u"doomed");
    pause();
    return 0;
  });
  const HWND far = WaitForWindow(u"doomed");
  ASSERT_TRUE(far);
  std::thread killer([this] {
    usleep(50'000);
    kill(other_, SIGKILL);
  });
  EXPECT_EQ(SendMessageW(far, WM_USER + 7, 40, 2), 0);  // nobody listens; the death ends the wait
  killer.join();
  EXPECT_FALSE(IsWindow(far));  // though its parent has not looked at it yet
  EXPECT_EQ(FindWindowW(kClass, nullptr), nullptr);
  EXPECT_FALSE(PostMessageW(far, WM_USER, 0, 0));
  ExitCode();
}

}  // namespace
