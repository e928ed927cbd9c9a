#include "tests/winhost/window/window_fixture.h"

namespace {

class WindowsTest : public testing_support::OnMachineWithWindows {
 protected:
  void SetUp() override {
    Start();
    Register();
  }
};

TEST_F(WindowsTest, ClassesAreUniqueWhateverTheirCase) {
  EXPECT_EQ(Register(u"RECORDERwnd"), 0);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_CLASS_ALREADY_EXISTS});
  const HWND window = Create();
  EXPECT_FALSE(UnregisterClassW(kClass, nullptr));
  EXPECT_EQ(GetLastError(), DWORD{ERROR_CLASS_HAS_WINDOWS});
  DestroyWindow(window);
  EXPECT_TRUE(UnregisterClassW(kClass, nullptr));
  EXPECT_EQ(Create(), nullptr);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_CANNOT_FIND_WND_CLASS});
}

TEST_F(WindowsTest, AnAtomStandsForItsClass) {
  const ATOM atom = Register(u"Another");
  ASSERT_GE(atom, 0xC000);
  const HWND window =
      CreateWindowExW(0, MAKEINTRESOURCEW(atom), u"", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
  WCHAR name[64];
  EXPECT_EQ(GetClassNameW(window, name, 64), 7);
  EXPECT_EQ(std::u16string(name), u"Another");
  EXPECT_EQ(FindWindowW(MAKEINTRESOURCEW(atom), nullptr), window);
  DestroyWindow(window);
}

TEST_F(WindowsTest, AWindowIsToldOfItsLife) {
  const HWND window = Create();
  EXPECT_EQ(Told(), (std::vector<UINT>{WM_NCCREATE, WM_NCCALCSIZE, WM_CREATE, WM_SIZE, WM_MOVE}));
  Told().clear();
  EXPECT_TRUE(DestroyWindow(window));
  EXPECT_EQ(Told(), (std::vector<UINT>{WM_DESTROY, WM_NCDESTROY}));
  EXPECT_FALSE(IsWindow(window));
  EXPECT_FALSE(DestroyWindow(window));
  EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_WINDOW_HANDLE});
  EXPECT_NE(Create(), window);  // its handle is not used again
}

TEST_F(WindowsTest, AWindowMayRefuseToBe) {
  EXPECT_EQ(Create(WS_POPUP, u"", nullptr, RefuseNc()), nullptr);
  EXPECT_FALSE(WasTold(WM_DESTROY));
  EXPECT_EQ(Create(WS_POPUP, u"", nullptr, RefuseCreate()), nullptr);
  EXPECT_TRUE(WasTold(WM_DESTROY));
  EXPECT_EQ(FindWindowW(kClass, nullptr), nullptr);
  EXPECT_EQ(Create(WS_CHILD), nullptr);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_TLW_WITH_WSCHILD});
}

TEST_F(WindowsTest, FindingGoesByClassAndTitleFromTheFront) {
  const HWND back = Create(WS_POPUP, u"one");
  const HWND front = Create(WS_POPUP, u"two");
  const HWND hidden_talker = Create(0, u"three", HWND_MESSAGE);
  EXPECT_EQ(FindWindowW(u"recorderWND", nullptr), front);
  EXPECT_EQ(FindWindowW(kClass, u"ONE"), back);
  EXPECT_EQ(FindWindowW(nullptr, u"two"), front);
  EXPECT_EQ(FindWindowW(kClass, u"three"), nullptr);
  EXPECT_EQ(FindWindowW(u"Other", nullptr), nullptr);
  EXPECT_EQ(FindWindowExW(HWND_MESSAGE, nullptr, kClass, nullptr), hidden_talker);
  EXPECT_EQ(FindWindowExW(nullptr, front, kClass, nullptr), back);
  BringWindowToTop(back);
  EXPECT_EQ(FindWindowW(kClass, nullptr), back);
  EXPECT_TRUE(SetWindowTextW(back, u"new"));
  EXPECT_EQ(FindWindowW(kClass, u"new"), back);
}

TEST_F(WindowsTest, DependentsGoWithTheirOwner) {
  const HWND owner = Create();
  const HWND owned = Create(WS_POPUP, u"", owner);
  const HWND child = Create(WS_CHILD, u"", owner);
  EXPECT_EQ(GetParent(child), owner);
  EXPECT_EQ(FindWindowExW(owner, nullptr, kClass, nullptr), child);
  DestroyWindow(owner);
  EXPECT_FALSE(IsWindow(owned));
  EXPECT_FALSE(IsWindow(child));
}

TEST_F(WindowsTest, StatesFollowShowing) {
  const HWND window = Create();
  EXPECT_FALSE(IsWindowVisible(window));
  EXPECT_FALSE(ShowWindow(window, SW_SHOW));
  EXPECT_TRUE(IsWindowVisible(window));
  EXPECT_EQ(GetForegroundWindow(), window);
  EXPECT_TRUE(ShowWindow(window, SW_MINIMIZE));
  EXPECT_TRUE(IsIconic(window));
  ShowWindow(window, SW_RESTORE);
  EXPECT_FALSE(IsIconic(window));
  EXPECT_TRUE(WasTold(WM_SHOWWINDOW));
  EXPECT_FALSE(EnableWindow(window, FALSE));
  EXPECT_FALSE(IsWindowEnabled(window));
  EXPECT_TRUE(EnableWindow(window, TRUE));
  ShowWindow(window, SW_HIDE);
  EXPECT_EQ(GetForegroundWindow(), nullptr);
}

TEST_F(WindowsTest, LongsAreKept) {
  Register(u"WithExtra", 12);
  const HWND window =
      CreateWindowExW(WS_EX_TOPMOST, u"WithExtra", u"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
  EXPECT_EQ(SetWindowLongPtrW(window, GWLP_USERDATA, 77), 0);
  EXPECT_EQ(SetWindowLongPtrW(window, GWLP_USERDATA, 78), 77);
  EXPECT_EQ(GetWindowLongPtrW(window, GWLP_WNDPROC), reinterpret_cast<LONG_PTR>(&Record));
  EXPECT_EQ(GetWindowLongW(window, GWL_EXSTYLE), LONG{WS_EX_TOPMOST});
  SetWindowLongPtrW(window, 4, -5);
  EXPECT_EQ(GetWindowLongPtrW(window, 4), -5);
  SetLastError(0);
  EXPECT_EQ(SetWindowLongPtrW(window, 5, 1), 0);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_INDEX});
  DestroyWindow(window);
}

}  // namespace
