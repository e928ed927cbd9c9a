// The desktop's measures, its one monitor, the system's colours and parameters.
#include <windows.h>

#include <algorithm>
#include <iterator>

#include "winhost/window/display.h"
#include "winhost/window/dpi.h"
#include "winhost/window/geometry.h"
#include "winhost/window/screen_facts.h"
#include "winhost/window/window.h"

namespace winhost {
namespace {

constexpr UINT kHoverMs = 400;

HMONITOR TheMonitor() { return reinterpret_cast<HMONITOR>(static_cast<LONG_PTR>(0x10001)); }

RECT WholeScreen() {
  const SIZE size = Display::Current().Size();
  return {0, 0, size.cx, size.cy};
}

RECT WorkArea() {
  RECT work = WholeScreen();
  work.bottom = std::max<LONG>(work.bottom - TheScreenFacts().taskbar, 1);
  return work;
}

struct MetricRow {
  int index;
  int at_96;
  bool scales;
};

constexpr MetricRow kMetrics[] = {
    {SM_CXVSCROLL, 17, true},   {SM_CYHSCROLL, 17, true},     {SM_CYCAPTION, 23, true},   {SM_CXBORDER, 1, false},
    {SM_CYBORDER, 1, false},    {SM_CXICON, 32, true},        {SM_CYICON, 32, true},      {SM_CXCURSOR, 32, true},
    {SM_CYCURSOR, 32, true},    {SM_MOUSEPRESENT, 1, false},  {SM_CXFRAME, 4, true},      {SM_CYFRAME, 4, true},
    {SM_CXMINTRACK, 136, true}, {SM_CYMINTRACK, 39, true},    {SM_CXDOUBLECLK, 4, false}, {SM_CYDOUBLECLK, 4, false},
    {SM_CXSMICON, 16, true},    {SM_CYSMICON, 16, true},      {SM_CXDRAG, 4, false},      {SM_CYDRAG, 4, false},
    {SM_CMONITORS, 1, false},   {SM_CXPADDEDBORDER, 4, true},
};

int ScreenMetric(int index) {
  constexpr int kBeyond = 16;  // a window may be dragged so much larger than the screen
  const RECT all = WholeScreen(), work = WorkArea();
  switch (index) {
    case SM_CXSCREEN:
    case SM_CXVIRTUALSCREEN:
      return all.right;
    case SM_CYSCREEN:
    case SM_CYVIRTUALSCREEN:
      return all.bottom;
    case SM_CXFULLSCREEN:
    case SM_CXMAXIMIZED:
      return work.right;
    case SM_CYFULLSCREEN:
    case SM_CYMAXIMIZED:
      return work.bottom;
    case SM_CXMAXTRACK:
      return all.right + kBeyond;
    case SM_CYMAXTRACK:
      return all.bottom + kBeyond;
    case SM_MAXIMUMTOUCHES:
      return TheScreenFacts().touch_points;
    case SM_DIGITIZER: {
      constexpr int kIntegratedTouch = 0x01, kMultiInput = 0x40, kReady = 0x80;
      const int points = TheScreenFacts().touch_points;
      return points == 0 ? 0 : kIntegratedTouch | kReady | (points > 1 ? kMultiInput : 0);
    }
    default:
      return 0;
  }
}

bool IsMonitor(HMONITOR monitor) {
  if (monitor == TheMonitor()) return true;
  SetLastError(ERROR_INVALID_HANDLE);
  return false;
}

HMONITOR Choose(bool touches, DWORD flags) {
  return touches || flags != MONITOR_DEFAULTTONULL ? TheMonitor() : nullptr;
}

bool Touches(const RECT& rectangle) {
  const RECT all = WholeScreen();
  RECT common;
  return IntersectRect(&common, &rectangle, &all) != FALSE;
}

}  // namespace
}  // namespace winhost

using namespace winhost;

int GetSystemMetrics(int index) {
  const auto row = std::ranges::find(kMetrics, index, &MetricRow::index);
  if (row == std::end(kMetrics)) return ScreenMetric(index);
  return row->scales ? MulDiv(row->at_96, SystemDpi(), 96) : row->at_96;
}

BOOL SystemParametersInfoW(UINT action, UINT, PVOID data, UINT) {
  if (action == SPI_GETWORKAREA && data) {
    *static_cast<RECT*>(data) = WorkArea();
    return TRUE;
  }
  if (action == SPI_GETMOUSEHOVERTIME && data) {
    *static_cast<UINT*>(data) = kHoverMs;
    return TRUE;
  }
  SetLastError(ERROR_INVALID_PARAMETER);
  return FALSE;
}

HMONITOR MonitorFromWindow(HWND window, DWORD flags) {
  const auto info = WindowTable::Current()->Find(window);
  return Choose(info && Touches(FrameOnScreen(*info)), flags);
}

HMONITOR MonitorFromPoint(POINT point, DWORD flags) {
  const RECT all = WholeScreen();
  return Choose(PtInRect(&all, point) != FALSE, flags);
}

HMONITOR MonitorFromRect(LPCRECT rectangle, DWORD flags) { return Choose(rectangle && Touches(*rectangle), flags); }

BOOL GetMonitorInfoW(HMONITOR monitor, LPMONITORINFO info) {
  if (!IsMonitor(monitor)) return FALSE;
  if (!info || info->cbSize != sizeof *info) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  info->rcMonitor = WholeScreen();
  info->rcWork = WorkArea();
  info->dwFlags = MONITORINFOF_PRIMARY;
  return TRUE;
}

BOOL EnumDisplayMonitors(HDC context, LPCRECT clip, MONITORENUMPROC visit, LPARAM parameter) {
  if (!visit) return FALSE;
  RECT part = WholeScreen();
  if (clip && !IntersectRect(&part, &part, clip)) return TRUE;
  return visit(TheMonitor(), context, &part, parameter);
}

// The colours of the light theme that the supported systems share.
DWORD GetSysColor(int index) {
  struct Row {
    int index;
    DWORD color;  // 0x00bbggrr
  };
  constexpr Row kColors[] = {
      {COLOR_BACKGROUND, 0x000000}, {COLOR_WINDOW, 0xFFFFFF},    {COLOR_WINDOWFRAME, 0x646464},
      {COLOR_WINDOWTEXT, 0x000000}, {COLOR_HIGHLIGHT, 0xD77800}, {COLOR_HIGHLIGHTTEXT, 0xFFFFFF},
      {COLOR_BTNFACE, 0xF0F0F0},    {COLOR_GRAYTEXT, 0x6D6D6D},  {COLOR_BTNTEXT, 0x000000},
      {COLOR_INFOTEXT, 0x000000},   {COLOR_INFOBK, 0xE1FFFF},
  };
  const auto row = std::ranges::find(kColors, index, &Row::index);
  return row == std::end(kColors) ? 0 : row->color;
}

BOOL MessageBeep(UINT) {
  Display::Current().Beep();
  return TRUE;
}
