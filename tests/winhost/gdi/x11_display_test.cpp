// Windows on a real X server, which the test starts, with pointer and keys from outside. Skipped where Xvfb or xdotool
// are not installed.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>
#include <windows.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <functional>

#include "tests/support/machine_fixture.h"
#include "winhost/dialogs/folder_dialog.h"

namespace {

constexpr int kPatienceMs = 20'000;

std::vector<UINT>& Told() {
  static std::vector<UINT> told;
  return told;
}
std::u16string& Typed() {
  static std::u16string typed;
  return typed;
}

LRESULT CALLBACK Record(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  Told().push_back(message);
  if (message == WM_CHAR) Typed() += static_cast<char16_t>(wparam);
  if (message == WM_NCHITTEST) {
    POINT point{static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))};
    ScreenToClient(window, &point);
    return point.y < 20 ? HTCAPTION : HTCLIENT;
  }
  if (message == WM_PAINT) {
    PAINTSTRUCT paint;
    const HDC context = BeginPaint(window, &paint);
    const HBRUSH brush = CreateSolidBrush(RGB(0, 128, 255));
    FillRect(context, &paint.rcPaint, brush);
    DeleteObject(brush);
    EndPaint(window, &paint);
    return 0;
  }
  return DefWindowProcW(window, message, wparam, lparam);
}

bool Has(UINT message) { return std::find(Told().begin(), Told().end(), message) != Told().end(); }

class X11DisplayTest : public testing_support::OnMachine {
 protected:
  void SetUp() override {
    for (const char* program : {"/usr/bin/Xvfb", "/usr/bin/xdotool"}) {
      ASSERT_EQ(access(program, X_OK), 0) << program << " is missing: tools/deps.sh test";
    }
    StartServer();
    setenv("VANTA_DISPLAY", "x11", 1);
    Start();
    WNDCLASSEXW values{};
    values.cbSize = sizeof values;
    values.lpfnWndProc = Record;
    values.lpszClassName = u"OnX";
    RegisterClassExW(&values);
    window_ = CreateWindowExW(0, u"OnX", u"窗口", WS_POPUP, 100, 80, 200, 120, nullptr, nullptr, nullptr, nullptr);
    ShowWindow(window_, SW_SHOW);
  }
  void TearDown() override {
    if (window_) DestroyWindow(window_);
    server_to_end_ = server_;
  }
  // The machine, and with it the connection, ends before the server does.
  ~X11DisplayTest() override {
    if (server_to_end_ <= 0) return;
    kill(server_to_end_, SIGTERM);
    waitpid(server_to_end_, nullptr, 0);
  }

  // The server picks a free number and says which.
  void StartServer() {
    std::array<int, 2> number{};
    ASSERT_EQ(pipe(number.data()), 0);
    server_ = fork();
    if (server_ == 0) {
      close(number[0]);
      const std::string descriptor = std::to_string(number[1]);
      freopen("/dev/null", "w", stderr);
      execl("/usr/bin/Xvfb", "Xvfb", "-displayfd", descriptor.c_str(), "-screen", "0", "640x480x24", "-nolisten", "tcp",
            nullptr);
      _exit(1);
    }
    close(number[1]);
    std::string text;
    char each = 0;
    while (read(number[0], &each, 1) == 1 && each != '\n') text += each;
    close(number[0]);
    ASSERT_FALSE(text.empty());
    setenv("DISPLAY", (":" + text).c_str(), 1);
  }

  // Runs the messages until it is so.
  static bool Until(const std::function<bool()>& so) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(kPatienceMs);
    while (!so()) {
      if (std::chrono::steady_clock::now() > end) return false;
      MSG message;
      while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
      }
      usleep(2000);
    }
    return true;
  }
  static bool Tool(const std::string& arguments) {
    return std::system(("timeout 20 xdotool " + arguments + " >/dev/null 2>&1").c_str()) == 0;
  }
  bool LiesAt(int x, int y) {
    RECT frame;
    return GetWindowRect(window_, &frame) && frame.left == x && frame.top == y;
  }

  HWND window_ = nullptr;
  pid_t server_ = 0, server_to_end_ = 0;
};

TEST_F(X11DisplayTest, PointerKeysAndCaptionReachTheWindow) {
  ASSERT_TRUE(Until([] { return Has(WM_PAINT) && Has(WM_SETFOCUS); }));
  EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), 640);
  ASSERT_TRUE(Tool("mousemove 150 150 click 1"));
  EXPECT_TRUE(Until([] { return Has(WM_LBUTTONDOWN) && Has(WM_LBUTTONUP); }));
  ASSERT_TRUE(Tool("click 4"));
  EXPECT_TRUE(Until([] { return Has(WM_MOUSEWHEEL); }));
  ASSERT_TRUE(Tool("key a key shift+b key Tab"));
  EXPECT_TRUE(Until([] { return Typed() == u"aB\t"; }));
  ASSERT_TRUE(Tool("mousemove 120 90 mousedown 1 mousemove 145 120 mousemove 170 130 mouseup 1"));
  EXPECT_TRUE(Until([&] { return Has(WM_EXITSIZEMOVE) && LiesAt(150, 120); }));
}

TEST_F(X11DisplayTest, TheFolderPickerIsAnsweredFromOutside) {
  ASSERT_TRUE(Until([] { return Has(WM_SETFOCUS); }));
  std::filesystem::create_directories(folder_ / "D/Music");
  const std::string user =
      "(timeout 20 xdotool search --sync --onlyvisible --name 选择文件夹 && "
      "timeout 20 xdotool type 'D:\\music' && timeout 20 xdotool key Return) >/dev/null 2>&1 &";
  ASSERT_EQ(std::system(user.c_str()), 0);
  const auto give_up = [](HWND, UINT, UINT_PTR, DWORD) -> void {
    PostMessageW(FindWindowW(u"#32770", nullptr), WM_COMMAND, IDCANCEL, 0);
  };
  const UINT_PTR patience = SetTimer(nullptr, 0, kPatienceMs, give_up);
  std::u16string folder;
  EXPECT_EQ(winhost::AskForFolder({window_, u"选择文件夹", u"", u"选择文件夹", u"C:\\"}, &folder), S_OK);
  KillTimer(nullptr, patience);
  EXPECT_EQ(folder, u"D:\\Music");
}

TEST_F(X11DisplayTest, PixelsAreOnTheDisplayAndHidingTakesThemAway) {
  ASSERT_TRUE(Until([] { return Has(WM_PAINT); }));
  EXPECT_TRUE(Tool("search --sync --onlyvisible --name 窗口"));
  MoveWindow(window_, 30, 40, 100, 90, TRUE);
  EXPECT_TRUE(Until([&] { return LiesAt(30, 40); }));
  ShowWindow(window_, SW_MINIMIZE);
  EXPECT_TRUE(IsIconic(window_));
  ShowWindow(window_, SW_RESTORE);
  EXPECT_TRUE(Until([&] { return LiesAt(30, 40) && IsWindowVisible(window_); }));
}

}  // namespace
