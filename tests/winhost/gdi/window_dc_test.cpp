#include <commctrl.h>
#include <windows.h>

#include "tests/support/machine_fixture.h"
#include "winhost/window/screen.h"

namespace {

namespace screen = winhost::screen;

constexpr COLORREF kRed = RGB(255, 0, 0);
RECT g_painted{};

LRESULT CALLBACK PaintRed(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message != WM_PAINT) return DefWindowProcW(window, message, wparam, lparam);
  PAINTSTRUCT paint;
  const HDC context = BeginPaint(window, &paint);
  g_painted = paint.rcPaint;
  const HBRUSH brush = CreateSolidBrush(kRed);
  RECT wide{-100, 20, 1000, 1000};
  FillRect(context, &wide, brush);
  DeleteObject(brush);
  EndPaint(window, &paint);
  return 0;
}

// 0x00rrggbb of a pixel of the screen.
DWORD Seen(int x, int y) {
  const winhost::Picture picture = screen::Snapshot();
  const std::uint8_t* pixel = picture.At(x, y);
  return static_cast<DWORD>(pixel[2] << 16 | pixel[1] << 8 | pixel[0]);
}

class WindowDcTest : public testing_support::OnMachine {
 protected:
  void SetUp() override {
    Start(R"({"screen": {"width": 400, "height": 300, "taskbar": 0}})");
    WNDCLASSEXW values{};
    values.cbSize = sizeof values;
    values.lpfnWndProc = PaintRed;
    values.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<ULONG_PTR>(COLOR_WINDOW + 1));
    values.lpszClassName = u"Red";
    RegisterClassExW(&values);
  }
  static HWND Make(DWORD ex_style = 0, HWND parent = nullptr, DWORD style = WS_POPUP) {
    return CreateWindowExW(ex_style, u"Red", u"", style | WS_VISIBLE, 50, 40, 100, 60, parent, nullptr, nullptr,
                           nullptr);
  }
  static constexpr DWORD kDesk = 0x3A6EA5;
};

TEST_F(WindowDcTest, ErasingAndPaintingReachTheScreen) {
  const HWND window = Make();
  UpdateWindow(window);
  EXPECT_EQ(g_painted.right, 100);
  EXPECT_EQ(Seen(60, 50), 0xFFFFFFu);  // the class's background
  EXPECT_EQ(Seen(60, 60), 0xFF0000u);
  EXPECT_EQ(Seen(149, 99), 0xFF0000u);
  EXPECT_EQ(Seen(150, 60), kDesk);
  ShowWindow(window, SW_HIDE);
  EXPECT_EQ(Seen(60, 60), kDesk);
}

TEST_F(WindowDcTest, OnlyWhatIsInvalidIsPainted) {
  const HWND window = Make();
  ValidateRect(window, nullptr);
  const RECT part{10, 30, 20, 40};
  InvalidateRect(window, &part, FALSE);
  UpdateWindow(window);
  EXPECT_TRUE(EqualRect(&g_painted, &part));
  EXPECT_EQ(Seen(60, 70), 0xFF0000u);
  EXPECT_EQ(Seen(59, 70), 0x000000u);  // nobody has ever painted it
}

TEST_F(WindowDcTest, ShapesAndChildrenAreSeen) {
  const HWND window = Make();
  const HWND child = Make(0, window, WS_CHILD);  // at 50, 40 inside: cut at the parent's edge
  UpdateWindow(window);
  EXPECT_EQ(Seen(105, 90), 0xFFFFFFu);  // the child's own background, above its red
  EXPECT_EQ(Seen(155, 120), kDesk);
  DestroyWindow(child);
  SetWindowRgn(window, CreateRoundRectRgn(0, 0, 101, 61, 40, 40), TRUE);
  UpdateWindow(window);
  EXPECT_EQ(Seen(51, 41), kDesk);
  EXPECT_EQ(Seen(100, 70), 0xFF0000u);
  EXPECT_EQ(WindowFromPoint({51, 41}), nullptr);
  EXPECT_EQ(SetWindowRgn(window, reinterpret_cast<HRGN>(12), TRUE), 0);
}

TEST_F(WindowDcTest, ALayeredWindowBlends) {
  const HWND window = Make(WS_EX_LAYERED);
  const HDC memory = CreateCompatibleDC(nullptr);
  BITMAPINFO info{};
  info.bmiHeader = {sizeof(BITMAPINFOHEADER), 2, -1, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* bits = nullptr;
  const HBITMAP bitmap = CreateDIBSection(memory, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  ASSERT_TRUE(bitmap);
  const HGDIOBJ former = SelectObject(memory, bitmap);
  static_cast<DWORD*>(bits)[0] = 0x80800000;  // half red, premultiplied
  static_cast<DWORD*>(bits)[1] = 0;
  POINT at{200, 100}, from{};
  SIZE size{2, 1};
  BLENDFUNCTION blend{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
  EXPECT_TRUE(UpdateLayeredWindow(window, nullptr, &at, &size, memory, &from, 0, &blend, ULW_ALPHA));
  EXPECT_EQ(Seen(200, 100), 0x9D3752u);
  EXPECT_EQ(Seen(201, 100), kDesk);
  EXPECT_EQ(WindowFromPoint({201, 100}), nullptr);  // the pointer goes through what nobody sees
  EXPECT_EQ(WindowFromPoint({200, 100}), window);
  EXPECT_FALSE(UpdateLayeredWindow(Make(), nullptr, &at, &size, memory, &from, 0, &blend, ULW_ALPHA));
  EXPECT_FALSE(
      UpdateLayeredWindow(window, nullptr, &at, &size, reinterpret_cast<HDC>(12), &from, 0, &blend, ULW_ALPHA));
  SelectObject(memory, former);
  DeleteObject(bitmap);
  DeleteDC(memory);
}

TEST_F(WindowDcTest, APictureIsSavedAsPng) {
  UpdateWindow(Make());
  ASSERT_TRUE(screen::SavePng(screen::Snapshot(), folder_ / "screen.png"));
  EXPECT_GT(std::filesystem::file_size(folder_ / "screen.png"), 200u);
  EXPECT_FALSE(screen::SavePng(screen::Snapshot(), folder_ / "none" / "screen.png"));
}

TEST_F(WindowDcTest, ATrackedTipIsShownWhereItIsPut) {
  const HWND window = Make();
  UpdateWindow(window);
  const HWND tip = CreateWindowExW(0, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0, 0, 0,
                                   window, nullptr, nullptr, nullptr);
  ASSERT_TRUE(tip);
  TOOLINFOW tool{};
  tool.cbSize = sizeof tool;
  tool.uFlags = TTF_TRACK | TTF_ABSOLUTE;
  tool.hwnd = window;
  tool.uId = 1;
  char16_t text[] = u"where the product is put";
  tool.lpszText = text;
  EXPECT_TRUE(SendMessageW(tip, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool)));
  EXPECT_EQ(SendMessageW(tip, TTM_GETTOOLCOUNT, 0, 0), 1);
  EXPECT_EQ(SendMessageW(tip, TTM_GETDELAYTIME, TTDT_INITIAL, 0), 500);
  SendMessageW(tip, TTM_TRACKPOSITION, 0, MAKELPARAM(20, 200));
  EXPECT_FALSE(IsWindowVisible(tip));
  SendMessageW(tip, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&tool));
  RECT wide, narrow;
  ASSERT_TRUE(IsWindowVisible(tip) && GetWindowRect(tip, &wide));
  EXPECT_TRUE(wide.left == 20 && wide.top == 200 && wide.right > 100);
  EXPECT_EQ(Seen(20, 200), 0x767676u);
  EXPECT_EQ(Seen(22, 202), 0xFFFFFFu);
  int ink = 0;
  const winhost::Picture picture = screen::Snapshot(tip);
  for (int x = 0; x < picture.width; ++x) ink += picture.At(x, picture.height / 2)[1] < 160;
  EXPECT_GT(ink, 5);
  EXPECT_EQ(GetForegroundWindow(), window);
  EXPECT_EQ(SendMessageW(tip, TTM_SETMAXTIPWIDTH, 0, 60), -1);
  SendMessageW(tip, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
  GetWindowRect(tip, &narrow);
  EXPECT_TRUE(narrow.right < wide.right && narrow.bottom > wide.bottom);
  SendMessageW(tip, TTM_TRACKACTIVATE, FALSE, reinterpret_cast<LPARAM>(&tool));
  EXPECT_FALSE(IsWindowVisible(tip));
  tool.uFlags |= TTF_SUBCLASS;
  EXPECT_FALSE(SendMessageW(tip, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool)));
  DestroyWindow(window);
  EXPECT_FALSE(IsWindow(tip));
}

}  // namespace
