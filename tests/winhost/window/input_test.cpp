#include <windowsx.h>

#include <algorithm>

#include "tests/winhost/window/window_fixture.h"
#include "winhost/window/screen.h"

namespace {

namespace screen = winhost::screen;

struct Heard {
  UINT message;
  WPARAM wparam;
  int x, y;
};
std::vector<Heard>& TheHeard() {
  static std::vector<Heard> heard;
  return heard;
}
int g_part = HTCLIENT;

LRESULT CALLBACK Listen(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  const bool input = (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) ||
                     (message >= WM_KEYFIRST && message <= WM_KEYLAST) || message == WM_MOUSELEAVE ||
                     message == WM_MOUSEHOVER || message == WM_CAPTURECHANGED || message == WM_ENTERSIZEMOVE ||
                     message == WM_EXITSIZEMOVE || message == WM_TOUCH || message == WM_POINTERDOWN;
  if (input) TheHeard().push_back({message, wparam, GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam)});
  if (message == WM_NCHITTEST) return g_part;
  if (message == WM_TOUCH) {
    TOUCHINPUT touch{};
    const auto handle = reinterpret_cast<HTOUCHINPUT>(lparam);
    EXPECT_TRUE(GetTouchInputInfo(handle, 1, &touch, sizeof touch) && CloseTouchInputHandle(handle));
    EXPECT_FALSE(CloseTouchInputHandle(handle));
    TheHeard().back().x = TOUCH_COORD_TO_PIXEL(touch.x);
    TheHeard().back().wparam = touch.dwFlags;
    return 0;
  }
  return DefWindowProcW(window, message, wparam, lparam);
}

class InputTest : public testing_support::OnMachineWithWindows {
 protected:
  void Begin(std::string_view facts = R"({"clock": {"at": "2024-03-05T14:07:09", "stands": true}})") {
    Start(facts);
    WNDCLASSEXW values{};
    values.cbSize = sizeof values;
    values.style = CS_DBLCLKS;
    values.lpfnWndProc = Listen;
    values.lpszClassName = u"Listener";
    RegisterClassExW(&values);
    g_part = HTCLIENT;
    window_ = Make(100, 100);
  }
  HWND Make(int x, int y) {
    const HWND window =
        CreateWindowExW(0, u"Listener", u"", WS_POPUP | WS_VISIBLE, x, y, 200, 100, nullptr, nullptr, nullptr, nullptr);
    Run();
    TheHeard().clear();
    return window;
  }
  static void Run() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
  }
  static std::vector<UINT> Messages() {
    std::vector<UINT> messages;
    for (const Heard& each : TheHeard()) messages.push_back(each.message);
    return messages;
  }
  HWND window_ = nullptr;
};

TEST_F(InputTest, AClickComesInClientCoordinatesAndTwoAreADoubleClick) {
  Begin();
  screen::Click(110, 120);
  screen::Click(110, 120);
  Run();
  EXPECT_EQ(Messages(), (std::vector<UINT>{WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_MOUSEMOVE, WM_LBUTTONDBLCLK,
                                           WM_LBUTTONUP}));
  EXPECT_TRUE(TheHeard()[1].x == 10 && TheHeard()[1].y == 20);
  EXPECT_EQ(TheHeard()[1].wparam, WPARAM{MK_LBUTTON});
  TheHeard().clear();
  screen::Click(110, 120);
  Run();
  Sleep(600);
  screen::Click(110, 120);
  Run();
  EXPECT_EQ(TheHeard()[4].message, UINT{WM_LBUTTONDOWN});
}

TEST_F(InputTest, AClickGoesToTheFrontAndActivates) {
  Begin();
  const HWND other = Make(250, 150);
  EXPECT_EQ(GetForegroundWindow(), other);
  screen::Click(110, 120);
  Run();
  EXPECT_EQ(GetForegroundWindow(), window_);
  EXPECT_EQ(GetFocus(), window_);
  EnableWindow(window_, FALSE);
  TheHeard().clear();
  screen::Click(110, 120);
  Run();
  EXPECT_TRUE(TheHeard().empty());
}

TEST_F(InputTest, TheCaptureGetsWhatLiesOutside) {
  Begin();
  SetCapture(window_);
  screen::MovePointer(20, 30);
  Run();
  ASSERT_EQ(Messages(), (std::vector<UINT>{WM_MOUSEMOVE}));
  EXPECT_TRUE(TheHeard()[0].x == -80 && TheHeard()[0].y == -70);
  ReleaseCapture();
  screen::MovePointer(25, 30);
  Run();
  EXPECT_EQ(Messages(), (std::vector<UINT>{WM_MOUSEMOVE, WM_CAPTURECHANGED}));
  EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(InputTest, HoverComesAfterARestAndLeaveOnTheWayOut) {
  Begin();
  screen::MovePointer(110, 120);
  Run();
  TRACKMOUSEEVENT track{sizeof track, TME_HOVER | TME_LEAVE, window_, 300};
  EXPECT_TRUE(TrackMouseEvent(&track));
  const DWORD start = GetTickCount();
  MSG message;
  ASSERT_EQ(GetMessageW(&message, window_, WM_MOUSEHOVER, WM_MOUSELEAVE), TRUE);
  EXPECT_EQ(message.message, UINT{WM_MOUSEHOVER});
  EXPECT_EQ(GetTickCount() - start, 300u);
  EXPECT_TRUE(GET_X_LPARAM(message.lParam) == 10 && GET_Y_LPARAM(message.lParam) == 20);
  screen::MovePointer(5, 5);
  Run();
  EXPECT_EQ(TheHeard().back().message, UINT{WM_MOUSELEAVE});
  TheHeard().clear();
  screen::MovePointer(110, 120);
  screen::MovePointer(5, 5);
  Run();
  const auto later = Messages();
  EXPECT_EQ(std::count(later.begin(), later.end(), UINT{WM_MOUSELEAVE}), 0);  // once only
}

TEST_F(InputTest, DraggingByTheCaptionMovesAndEscapeTakesBack) {
  Begin();
  g_part = HTCAPTION;
  screen::MovePointer(110, 105);
  screen::Press();
  screen::MovePointer(160, 125);
  screen::Release();
  Run();
  RECT frame;
  GetWindowRect(window_, &frame);
  EXPECT_TRUE(frame.left == 150 && frame.top == 120 && frame.right == 350);
  const auto told = Messages();
  EXPECT_NE(std::find(told.begin(), told.end(), UINT{WM_ENTERSIZEMOVE}), told.end());
  EXPECT_NE(std::find(told.begin(), told.end(), UINT{WM_EXITSIZEMOVE}), told.end());
  Sleep(1000);
  g_part = HTBOTTOMRIGHT;
  screen::MovePointer(345, 215);
  screen::Press();
  screen::MovePointer(355, 235);
  screen::Key(VK_ESCAPE);
  Run();
  RECT after;
  GetWindowRect(window_, &after);
  EXPECT_TRUE(EqualRect(&frame, &after));
}

TEST_F(InputTest, TypingGivesKeysAndCharacters) {
  Begin();
  screen::Type(u"aB中");
  screen::Key(VK_TAB);
  Run();
  std::u16string typed;
  for (const Heard& each : TheHeard()) {
    if (each.message == WM_CHAR) typed += static_cast<char16_t>(each.wparam);
  }
  EXPECT_EQ(typed, u"aB中\t");
  EXPECT_EQ(TheHeard()[0].message, UINT{WM_KEYDOWN});
  EXPECT_EQ(TheHeard()[0].wparam, WPARAM{'A'});
  screen::KeyDown(VK_SHIFT);
  EXPECT_GE(GetKeyState(VK_SHIFT), 0);  // not before the message is fetched
  EXPECT_LT(GetAsyncKeyState(VK_SHIFT), 0);
  Run();
  EXPECT_LT(GetKeyState(VK_SHIFT), 0);
  TheHeard().clear();
  screen::KeyDown(VK_MENU);
  screen::Key('X');
  Run();
  EXPECT_EQ(TheHeard()[0].message, UINT{WM_SYSKEYDOWN});
}

TEST_F(InputTest, KeysAndButtonsThatWaitOutliveTheirWindow) {
  Begin();
  const HWND other = Make(100, 100);
  SetForegroundWindow(other);
  SetFocus(other);
  screen::KeyDown(VK_MENU);
  screen::MovePointer(150, 150);
  screen::Press();
  Run();
  screen::Release();
  screen::KeyUp(VK_MENU);
  DestroyWindow(other);
  Run();
  EXPECT_GE(GetKeyState(VK_MENU), 0);  // a key that stayed down would turn all that is typed into menu keys
  EXPECT_GE(GetKeyState(VK_LBUTTON), 0);
}

TEST_F(InputTest, ContactsAreTouchesPointersOrAMouse) {
  Begin();
  EXPECT_TRUE(RegisterTouchWindow(window_, 0));
  screen::Touch(7, 130, 140);
  screen::LiftTouch(7, 130, 140);
  Run();
  EXPECT_EQ(Messages(), (std::vector<UINT>{WM_TOUCH, WM_TOUCH}));
  EXPECT_EQ(TheHeard()[0].x, 130);
  EXPECT_TRUE(TheHeard()[0].wparam & TOUCHEVENTF_DOWN);
  UnregisterTouchWindow(window_);
  TheHeard().clear();
  screen::Touch(8, 130, 140, winhost::ContactKind::Pen);
  Run();
  EXPECT_EQ(TheHeard()[0].message, UINT{WM_POINTERDOWN});
  POINTER_INPUT_TYPE type = 0;
  EXPECT_TRUE(GetPointerType(8, &type));
  EXPECT_EQ(type, POINTER_INPUT_TYPE{PT_PEN});
  EXPECT_EQ(TheHeard().back().message, UINT{WM_LBUTTONDOWN});  // nobody wanted the pointer's
}

TEST_F(InputTest, FiltersAndPeeksLeaveInputWhereItIs) {
  Begin();
  screen::Click(110, 120);
  MSG message;
  EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_LBUTTONUP, WM_LBUTTONUP, PM_NOREMOVE));
  EXPECT_FALSE(PeekMessageW(&message, nullptr, WM_KEYDOWN, WM_KEYUP, PM_REMOVE));
  EXPECT_TRUE(HIWORD(GetQueueStatus(QS_INPUT)));
  PostMessageW(window_, WM_USER, 0, 0);
  ASSERT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
  EXPECT_EQ(message.message, UINT{WM_USER});  // what was posted comes before input
  Run();
  EXPECT_EQ(TheHeard().size(), 3u);
}

TEST_F(InputTest, PaintingComesLastAndUntilItIsDone) {
  Begin();
  SetTimer(window_, 1, 10, nullptr);
  InvalidateRect(window_, nullptr, TRUE);
  ValidateRect(window_, nullptr);
  RECT update;
  EXPECT_FALSE(GetUpdateRect(window_, &update, FALSE));
  const RECT parts[] = {{0, 0, 10, 10}, {50, 50, 60, 60}, {190, 90, 400, 400}};
  for (const RECT& part : parts) InvalidateRect(window_, &part, FALSE);
  EXPECT_TRUE(GetUpdateRect(window_, &update, FALSE));
  EXPECT_TRUE(update.right == 200 && update.bottom == 100);  // cut to the client area
  PostQuitMessage(1);
  MSG message;
  EXPECT_FALSE(GetMessageW(&message, nullptr, 0, 0));
  Sleep(20);
  for (int i = 0; i < 2; ++i) {
    ASSERT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.message, UINT{WM_PAINT});
  }
  UpdateWindow(window_);
  ASSERT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
  EXPECT_EQ(message.message, UINT{WM_TIMER});
}

}  // namespace
