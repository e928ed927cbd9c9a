#include <shellscalingapi.h>

#include <algorithm>

#include "tests/winhost/window/window_fixture.h"
#include "winhost/window/screen.h"

namespace {

using Function = void (*)();
Function Address(HMODULE module, const char* name) { return reinterpret_cast<Function>(GetProcAddress(module, name)); }

class PlacingTest : public testing_support::OnMachineWithWindows {
 protected:
  void Begin(std::string_view facts = R"({"screen": {"width": 800, "height": 600, "taskbar": 40}})") {
    Start(facts);
    Register();
    window_ = Create();
    ShowWindow(window_, SW_SHOW);
    SetWindowPos(window_, nullptr, 100, 50, 300, 200, SWP_NOZORDER);
    Told().clear();
  }
  RECT Frame() {
    RECT frame{};
    GetWindowRect(window_, &frame);
    return frame;
  }
  static std::vector<UINT> ToldOf(std::initializer_list<UINT> wanted) {
    std::vector<UINT> told;
    for (const UINT each : Told()) {
      if (std::find(wanted.begin(), wanted.end(), each) != wanted.end()) told.push_back(each);
    }
    return told;
  }
  HWND window_ = nullptr;
};

TEST_F(PlacingTest, AMoveAndASizeAreToldInOrder) {
  Begin();
  SetWindowPos(window_, nullptr, 10, 20, 30, 40, SWP_NOZORDER | SWP_NOACTIVATE);
  EXPECT_EQ(Told(), (std::vector<UINT>{WM_WINDOWPOSCHANGING, WM_NCCALCSIZE, WM_WINDOWPOSCHANGED, WM_MOVE, WM_SIZE}));
  EXPECT_EQ(Frame().left, 10);
  EXPECT_EQ(Frame().bottom, 60);
  Told().clear();
  SetWindowPos(window_, nullptr, 10, 20, 30, 40, SWP_NOZORDER | SWP_NOACTIVATE);
  EXPECT_EQ(Told(), (std::vector<UINT>{WM_WINDOWPOSCHANGING}));
  EXPECT_FALSE(SetWindowPos(reinterpret_cast<HWND>(12), nullptr, 0, 0, 1, 1, 0));
  EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_WINDOW_HANDLE});
}

TEST_F(PlacingTest, PointsMapThroughParents) {
  Begin();
  const HWND child =
      CreateWindowExW(0, kClass, u"", WS_CHILD | WS_VISIBLE, 20, 30, 40, 40, window_, nullptr, nullptr, nullptr);
  POINT point{1, 2};
  ClientToScreen(child, &point);
  EXPECT_TRUE(point.x == 121 && point.y == 82);
  EXPECT_EQ(MapWindowPoints(nullptr, child, &point, 1), MAKELONG(-120, -80));
  EXPECT_TRUE(point.x == 1 && point.y == 2);
  EXPECT_EQ(WindowFromPoint({125, 85}), child);
  EXPECT_EQ(WindowFromPoint({105, 55}), window_);
  EXPECT_EQ(WindowFromPoint({5, 5}), nullptr);
  EXPECT_EQ(GetAncestor(child, GA_ROOT), window_);
  EXPECT_TRUE(IsChild(window_, child));
}

TEST_F(PlacingTest, MinimisedAndMaximisedGoBack) {
  Begin();
  const RECT before = Frame();
  SendMessageW(window_, WM_SYSCOMMAND, SC_MAXIMIZE, 0);
  EXPECT_TRUE(IsZoomed(window_));
  EXPECT_EQ(Frame().right, 800);
  EXPECT_EQ(Frame().bottom, 560);
  SendMessageW(window_, WM_SYSCOMMAND, SC_MINIMIZE, 0);
  RECT client;
  EXPECT_TRUE(IsIconic(window_) && GetClientRect(window_, &client) && IsRectEmpty(&client));
  EXPECT_EQ(GetForegroundWindow(), nullptr);
  SendMessageW(window_, WM_SYSCOMMAND, SC_RESTORE, 0);
  EXPECT_TRUE(IsZoomed(window_));
  SendMessageW(window_, WM_SYSCOMMAND, SC_RESTORE, 0);
  const RECT after = Frame();
  EXPECT_TRUE(EqualRect(&before, &after) && !IsZoomed(window_));
}

TEST_F(PlacingTest, OwnedWindowsStayBeforeTheirOwnerAndTopmostBeforeAll) {
  Begin();
  const HWND owned = Create(WS_POPUP | WS_VISIBLE, u"", window_);
  const HWND tip = CreateWindowExW(WS_EX_TOPMOST, kClass, u"", WS_POPUP | WS_VISIBLE, 0, 0, 1, 1, nullptr, nullptr,
                                   nullptr, nullptr);
  SetForegroundWindow(window_);
  EXPECT_EQ(GetWindow(window_, GW_HWNDPREV), owned);
  EXPECT_EQ(GetWindow(window_, GW_HWNDFIRST), tip);
  EXPECT_EQ(GetWindow(owned, GW_OWNER), window_);
  SetWindowPos(owned, window_, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  EXPECT_EQ(GetWindow(window_, GW_HWNDNEXT), owned);
}

TEST_F(PlacingTest, ActivationAndFocusChangeHands) {
  Begin();
  const HWND owned = Create(WS_POPUP, u"", window_);
  EXPECT_EQ(GetFocus(), window_);
  Told().clear();
  ShowWindow(owned, SW_SHOW);
  EXPECT_EQ(ToldOf({WM_ACTIVATE, WM_NCACTIVATE, WM_KILLFOCUS, WM_SETFOCUS}),
            (std::vector<UINT>{WM_NCACTIVATE, WM_ACTIVATE, WM_NCACTIVATE, WM_ACTIVATE, WM_KILLFOCUS, WM_SETFOCUS}));
  EXPECT_EQ(GetActiveWindow(), owned);
  DestroyWindow(owned);
  EXPECT_EQ(GetFocus(), window_);  // its owner's turn
  EnableWindow(window_, FALSE);
  EXPECT_EQ(GetFocus(), nullptr);
  EXPECT_EQ(SetFocus(window_), nullptr);
}

TEST_F(PlacingTest, MeasuresFollowTheDpiOfAnAwareProcess) {
  Begin(R"({"dpi": 144})");
  EXPECT_EQ(GetSystemMetrics(SM_CXICON), 32);
  const HMODULE shcore = LoadLibraryW(u"shcore.dll");
  const auto set = reinterpret_cast<decltype(&SetProcessDpiAwareness)>(Address(shcore, "SetProcessDpiAwareness"));
  const auto get = reinterpret_cast<decltype(&GetDpiForMonitor)>(Address(shcore, "GetDpiForMonitor"));
  ASSERT_TRUE(set && get);
  EXPECT_EQ(set(PROCESS_SYSTEM_DPI_AWARE), S_OK);
  EXPECT_EQ(set(PROCESS_SYSTEM_DPI_AWARE), E_ACCESSDENIED);
  UINT x = 0, y = 0;
  EXPECT_EQ(get(MonitorFromPoint({1, 1}, MONITOR_DEFAULTTONEAREST), MDT_EFFECTIVE_DPI, &x, &y), S_OK);
  EXPECT_EQ(x, 144u);
  EXPECT_EQ(GetSystemMetrics(SM_CXICON), 48);
  Told().clear();
  winhost::screen::ChangeDpi(192);
  EXPECT_TRUE(WasTold(WM_DPICHANGED));
}

TEST_F(PlacingTest, OlderSystemsLackWhatCameLater) {
  Begin(R"({"version": "xp"})");
  const HMODULE user = GetModuleHandleW(u"user32.dll");
  EXPECT_FALSE(GetProcAddress(user, "SetProcessDPIAware"));
  EXPECT_FALSE(GetProcAddress(user, "RegisterTouchWindow"));
  EXPECT_FALSE(LoadLibraryW(u"shcore.dll"));
}

TEST_F(PlacingTest, PropertiesAndRefusedHandles) {
  Begin();
  EXPECT_TRUE(SetPropW(window_, u"Some", &window_));
  EXPECT_EQ(GetPropW(window_, u"sOME"), &window_);
  EXPECT_EQ(RemovePropW(window_, u"some"), &window_);
  EXPECT_EQ(GetPropW(window_, u"some"), nullptr);
  const HWND none = reinterpret_cast<HWND>(12);
  POINT point{};
  RECT rect{};
  EXPECT_FALSE(GetWindowRect(none, &rect) || GetClientRect(none, &rect) || ClientToScreen(none, &point) ||
               ShowWindow(none, SW_SHOW) || InvalidateRect(none, nullptr, TRUE) || SetCapture(none) || SetFocus(none) ||
               UpdateWindow(none) || SetForegroundWindow(none) || SetPropW(none, u"a", nullptr));
  EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_WINDOW_HANDLE});
}

}  // namespace
