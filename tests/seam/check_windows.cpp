// Windows, their messages and rectangles: numbers, layouts and orders on which Windows and this side agree.
#include <windows.h>

#include <commctrl.h>
#include <shellscalingapi.h>
#include <windowsx.h>

#include <vector>

#include "seam_check.h"

namespace {

static_assert(sizeof(MSG) == (sizeof(void*) == 8 ? 48 : 28));
static_assert(sizeof(PAINTSTRUCT) == (sizeof(void*) == 8 ? 72 : 64));
static_assert(sizeof(WINDOWPOS) == (sizeof(void*) == 8 ? 40 : 28));
static_assert(sizeof(MINMAXINFO) == 40 && sizeof(MONITORINFO) == 40);
static_assert(sizeof(TRACKMOUSEEVENT) == (sizeof(void*) == 8 ? 24 : 16));
static_assert(sizeof(TOUCHINPUT) == (sizeof(void*) == 8 ? 48 : 40));
static_assert(sizeof(TOOLINFOW) == (sizeof(void*) == 8 ? 72 : 48));
static_assert(WM_MOUSEHOVER == 0x2A1 && WM_MOUSELEAVE == 0x2A3 && WM_DPICHANGED == 0x2E0 && WM_TOUCH == 0x240);
static_assert(WM_ENTERSIZEMOVE == 0x231 && WM_CAPTURECHANGED == 0x215 && WM_POINTERDOWN == 0x246);
static_assert(TTM_TRACKACTIVATE == WM_USER + 17 && TTM_ADDTOOLW == WM_USER + 50 && TTM_UPDATETIPTEXTW == WM_USER + 57);
static_assert(HTCAPTION == 2 && HTBOTTOMRIGHT == 17 && SM_CYVIRTUALSCREEN == 79 && VK_F24 == 0x87);
static_assert(WS_EX_LAYERED == 0x80000 && WS_EX_TRANSPARENT == 0x20 && ULW_ALPHA == 2 && SWP_FRAMECHANGED == 0x20);

std::vector<UINT>& Told() {
  static std::vector<UINT> told;
  return told;
}

LRESULT CALLBACK Record(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  constexpr UINT kWatched[] = {
      WM_NCCREATE, WM_NCCALCSIZE,        WM_CREATE,          WM_SIZE, WM_MOVE, WM_DESTROY, WM_NCDESTROY,
      WM_SETTEXT,  WM_WINDOWPOSCHANGING, WM_WINDOWPOSCHANGED};
  for (const UINT each : kWatched) {
    if (each == message) Told().push_back(message);
  }
  return DefWindowProcW(window, message, wparam, lparam);
}

HWND Make() {
  WNDCLASSEXW values{};
  values.cbSize = sizeof values;
  values.lpfnWndProc = Record;
  values.lpszClassName = TEXT("SeamWindow");
  RegisterClassExW(&values);
  Told().clear();
  return CreateWindowExW(0, TEXT("SeamWindow"), TEXT("seam"), WS_POPUP, 10, 20, 30, 40, nullptr, nullptr, nullptr,
                         nullptr);
}

bool LifeAndPlaceAreToldInOrder() {
  const HWND window = Make();
  const std::vector<UINT> born{WM_NCCREATE, WM_NCCALCSIZE, WM_CREATE, WM_SIZE, WM_MOVE};
  if (!window || Told() != born) return false;
  Told().clear();
  SetWindowPos(window, nullptr, 50, 60, 70, 80, SWP_NOZORDER | SWP_NOACTIVATE);
  const std::vector<UINT> placed{WM_WINDOWPOSCHANGING, WM_NCCALCSIZE, WM_WINDOWPOSCHANGED, WM_MOVE, WM_SIZE};
  const bool in_order = Told() == placed;
  Told().clear();
  DestroyWindow(window);
  return in_order && Told() == std::vector<UINT>{WM_DESTROY, WM_NCDESTROY};
}

bool PointsAndRectanglesMap() {
  const HWND window = Make();
  POINT point{1, 2};
  RECT client{}, frame{};
  const bool mapped = ClientToScreen(window, &point) && point.x == 11 && point.y == 22 &&
                      GetClientRect(window, &client) && client.right == 30 && client.bottom == 40 &&
                      GetWindowRect(window, &frame) && frame.left == 10 && frame.bottom == 60;
  DestroyWindow(window);
  return mapped && !GetWindowRect(window, &frame) && GetLastError() == ERROR_INVALID_WINDOW_HANDLE;
}

bool RectangleArithmetic() {
  const RECT a{0, 0, 10, 10}, b{5, -5, 20, 30}, none{3, 3, 3, 9};
  RECT out{1, 1, 1, 1};
  if (!IntersectRect(&out, &a, &b) || out.left != 5 || out.bottom != 10) return false;
  if (IntersectRect(&out, &a, &none) || out.right != 0) return false;
  if (!UnionRect(&out, &none, &a) || !EqualRect(&out, &a)) return false;
  return SubtractRect(&out, &a, &b) && out.right == 5 && !PtInRect(&a, {10, 0}) && PtInRect(&a, {9, 9});
}

constexpr SeamCheck kChecks[] = {
    {"windows: life and place are told in order", LifeAndPlaceAreToldInOrder},
    {"windows: points and rectangles map", PointsAndRectanglesMap},
    {"windows: rectangle arithmetic", RectangleArithmetic},
};

}  // namespace

std::span<const SeamCheck> WindowChecks() { return kChecks; }
