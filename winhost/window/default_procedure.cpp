// What a window does with the messages that its own procedure leaves to the system.
#include <windows.h>

#include <algorithm>

#include "winhost/kernel/waitable.h"
#include "winhost/window/device_state.h"
#include "winhost/window/display.h"
#include "winhost/window/drawing.h"
#include "winhost/window/geometry.h"
#include "winhost/window/inject.h"
#include "winhost/window/move_loop.h"
#include "winhost/window/place.h"
#include "winhost/window/titles.h"
#include "winhost/window/window.h"

namespace winhost {
namespace {

LRESULT TitleMessage(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  const auto info = WindowTable::Current()->Find(window);
  if (!info) return 0;
  switch (message) {
    case WM_SETTEXT:
      return SetTitle(window, reinterpret_cast<LPCWSTR>(lparam));
    case WM_GETTEXT:
      return CopyText(info->title, reinterpret_cast<LPWSTR>(lparam), static_cast<int>(wparam));
    default:
      return static_cast<LRESULT>(info->title.size());
  }
}

void SystemCommand(HWND window, WPARAM command) {
  const int part = static_cast<int>(command & 0xF);
  switch (command & 0xFFF0) {
    case SC_CLOSE:
      SendMessageW(window, WM_CLOSE, 0, 0);
      break;
    case SC_MINIMIZE:
      ShowWindow(window, SW_MINIMIZE);
      break;
    case SC_MAXIMIZE:
      ShowWindow(window, SW_SHOWMAXIMIZED);
      break;
    case SC_RESTORE:
      ShowWindow(window, SW_RESTORE);
      break;
    case SC_MOVE:
      RunMoveLoop(window, HTCAPTION);
      break;
    case SC_SIZE:
      RunMoveLoop(window, part == 0 ? HTBOTTOMRIGHT : part - WMSZ_LEFT + HTLEFT);
      break;
    default:
      break;
  }
}

bool IsBorder(int part) { return part >= HTLEFT && part <= HTBOTTOMRIGHT; }

void PressFrame(HWND window, int part) {
  if (part == HTCAPTION) {
    SendMessageW(window, WM_SYSCOMMAND, SC_MOVE | HTCAPTION, 0);
  } else if (IsBorder(part)) {
    SendMessageW(window, WM_SYSCOMMAND, static_cast<WPARAM>(SC_SIZE + part - HTLEFT + WMSZ_LEFT), 0);
  } else if (part == HTCLOSE) {
    SendMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
  } else if (part == HTMINBUTTON) {
    SendMessageW(window, WM_SYSCOMMAND, SC_MINIMIZE, 0);
  } else if (part == HTMAXBUTTON) {
    SendMessageW(window, WM_SYSCOMMAND, IsZoomed(window) ? SC_RESTORE : SC_MAXIMIZE, 0);
  }
}

void DoubleClickFrame(HWND window, int part) {
  if (part != HTCAPTION || !(GetWindowLongW(window, GWL_STYLE) & WS_MAXIMIZEBOX)) return;
  SendMessageW(window, WM_SYSCOMMAND, IsZoomed(window) ? SC_RESTORE : SC_MAXIMIZE, 0);
}

// Children that do not do it themselves leave it to their parent, which may refuse.
LRESULT MouseActivate(HWND window, WPARAM wparam, LPARAM lparam) {
  const auto info = WindowTable::Current()->Find(window);
  if (info && info->child()) {
    if (const LRESULT answer = SendMessageW(info->parent, WM_MOUSEACTIVATE, wparam, lparam)) return answer;
  }
  return info && (info->ex_style & WS_EX_NOACTIVATE) ? MA_NOACTIVATE : MA_ACTIVATE;
}

HCURSOR CursorFor(HWND window, int part) {
  switch (part) {
    case HTLEFT:
    case HTRIGHT:
      return LoadCursorW(nullptr, IDC_SIZEWE);
    case HTTOP:
    case HTBOTTOM:
      return LoadCursorW(nullptr, IDC_SIZENS);
    case HTTOPLEFT:
    case HTBOTTOMRIGHT:
      return LoadCursorW(nullptr, IDC_SIZENWSE);
    case HTTOPRIGHT:
    case HTBOTTOMLEFT:
      return LoadCursorW(nullptr, IDC_SIZENESW);
    case HTCLIENT: {
      const auto local = FindLocalWindow(window);
      return local ? local->window_class->values.hCursor : nullptr;
    }
    default:
      return LoadCursorW(nullptr, IDC_ARROW);
  }
}

LRESULT ChooseCursor(HWND window, WPARAM wparam, LPARAM lparam) {
  const int part = static_cast<short>(LOWORD(lparam));
  const auto info = WindowTable::Current()->Find(window);
  // A parent may want one cursor for all its children; borders are their own business.
  if (info && info->child() && !IsBorder(part) && SendMessageW(info->parent, WM_SETCURSOR, wparam, lparam)) return TRUE;
  if (part == HTERROR && IsButtonDown(HIWORD(lparam))) MessageBeep(MB_OK);
  const HCURSOR cursor = CursorFor(window, part);
  if (!cursor) return FALSE;
  SetCursor(cursor);
  return TRUE;
}

// A window that can be sized keeps to the limits that it gives itself.
void KeepLimits(HWND window, WINDOWPOS& wanted) {
  if (wanted.flags & SWP_NOSIZE) return;
  const auto info = WindowTable::Current()->Find(window);
  if (!info || (info->style & WS_MINIMIZE) || !(info->style & WS_THICKFRAME)) return;
  const MINMAXINFO limits = AskLimits(window);
  wanted.cx = std::max<int>(std::min<int>(wanted.cx, limits.ptMaxTrackSize.x), limits.ptMinTrackSize.x);
  wanted.cy = std::max<int>(std::min<int>(wanted.cy, limits.ptMaxTrackSize.y), limits.ptMinTrackSize.y);
}

void TellMoveAndSize(HWND window, const WINDOWPOS& done) {
  const auto info = WindowTable::Current()->Find(window);
  if (!info) return;
  if (!(done.flags & SWP_NOMOVE)) {
    const RECT client = ClientOnScreen(*info);
    const POINT at = info->child() ? POINT{info->place.left + info->client.left, info->place.top + info->client.top}
                                   : POINT{client.left, client.top};
    SendMessageW(window, WM_MOVE, 0, MAKELPARAM(at.x, at.y));
  }
  if (!(done.flags & SWP_NOSIZE) || (done.flags & SWP_FRAMECHANGED)) {
    if (const auto local = FindLocalWindow(window)) local->sized = true;
    const WPARAM kind = info->style & WS_MINIMIZE   ? SIZE_MINIMIZED
                        : info->style & WS_MAXIMIZE ? SIZE_MAXIMIZED
                                                    : SIZE_RESTORED;
    SendMessageW(window, WM_SIZE, kind,
                 MAKELPARAM(info->client.right - info->client.left, info->client.bottom - info->client.top));
  }
}

LRESULT HitTest(HWND window, LPARAM lparam) {
  const auto info = WindowTable::Current()->Find(window);
  if (!info) return HTNOWHERE;
  const POINT screen{static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))};
  const RECT frame = FrameOnScreen(*info), client = ClientOnScreen(*info);
  if (!PtInRect(&frame, screen)) return HTNOWHERE;
  if (PtInRect(&client, screen)) return HTCLIENT;
  return screen.y < client.top && (info->style & WS_CAPTION) == WS_CAPTION ? HTCAPTION : HTBORDER;
}

LRESULT Icon(HWND handle, UINT message, WPARAM which, LPARAM icon) {
  const auto window = FindLocalWindow(handle);
  if (!window || which > ICON_SMALL2) return 0;
  HICON& kept = window->icons[which == ICON_BIG ? 1 : 0];
  const HICON former = kept;
  if (message == WM_SETICON) {
    kept = reinterpret_cast<HICON>(icon);
    Display::Current().Changed(handle);
  }
  return reinterpret_cast<LRESULT>(former);
}

LRESULT Erase(HWND handle, WPARAM context) {
  const auto window = FindLocalWindow(handle);
  if (!window || !TheDrawing().erase) return FALSE;
  const HBRUSH brush = window->window_class->values.hbrBackground;
  return brush && TheDrawing().erase(reinterpret_cast<HDC>(context), brush);
}

void Paint(HWND window) {
  if (TheDrawing().paint_nothing) {
    TheDrawing().paint_nothing(window);
  } else {
    ValidateRect(window, nullptr);
  }
}

// A contact that the window does not want is a mouse's for it.
void PointerAsMouse(HWND window, UINT message, LPARAM lparam) {
  const POINT screen{static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))};
  const UINT mouse = message == WM_POINTERDOWN ? WM_LBUTTONDOWN : message == WM_POINTERUP ? WM_LBUTTONUP : WM_MOUSEMOVE;
  const auto info = WindowTable::Current()->Find(window);
  if (!info) return;
  if (message == WM_POINTERDOWN) InjectMouse(TopOf(*info).window, WM_MOUSEMOVE, screen, 0);
  InjectMouse(TopOf(*info).window, mouse, screen, 0);
}

void SystemKey(HWND window, WPARAM key) {
  if (key == VK_F4 && GetKeyState(VK_MENU) < 0) {
    const auto info = WindowTable::Current()->Find(window);
    if (info) PostMessageW(TopOf(*info).window, WM_SYSCOMMAND, SC_CLOSE, 0);
  }
}

// What has no answer, or one that is always the same.
LRESULT PlainAnswer(UINT message) {
  switch (message) {
    case WM_QUERYENDSESSION:
    case WM_NCACTIVATE:
      return TRUE;
    default:
      return 0;
  }
}

}  // namespace
}  // namespace winhost

using namespace winhost;

LRESULT DefWindowProcW(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_NCCREATE:
      SetTitle(window, reinterpret_cast<const CREATESTRUCTW*>(lparam)->lpszName);
      return TRUE;
    case WM_CLOSE:
      DestroyWindow(window);
      return 0;
    case WM_SYSCOMMAND:
      SystemCommand(window, wparam);
      return 0;
    case WM_SYSKEYDOWN:
      SystemKey(window, wparam);
      return 0;
    case WM_NCLBUTTONDOWN:
      PressFrame(window, static_cast<int>(wparam));
      return 0;
    case WM_NCLBUTTONDBLCLK:
      DoubleClickFrame(window, static_cast<int>(wparam));
      return 0;
    case WM_NCHITTEST:
      return HitTest(window, lparam);
    case WM_MOUSEACTIVATE:
      return MouseActivate(window, wparam, lparam);
    case WM_SETCURSOR:
      return ChooseCursor(window, wparam, lparam);
    case WM_ACTIVATE:
      if (LOWORD(wparam) != WA_INACTIVE && !IsIconic(window)) SetFocus(window);
      return 0;
    case WM_WINDOWPOSCHANGING:
      KeepLimits(window, *reinterpret_cast<WINDOWPOS*>(lparam));
      return 0;
    case WM_WINDOWPOSCHANGED:
      TellMoveAndSize(window, *reinterpret_cast<const WINDOWPOS*>(lparam));
      return 0;
    case WM_RBUTTONUP: {
      POINT screen{static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))};
      ClientToScreen(window, &screen);
      SendMessageW(window, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window), MAKELPARAM(screen.x, screen.y));
      return 0;
    }
    case WM_CONTEXTMENU: {
      const auto info = WindowTable::Current()->Find(window);
      if (info && info->child()) SendMessageW(info->parent, WM_CONTEXTMENU, wparam, lparam);
      return 0;
    }
    case WM_PAINT:
      Paint(window);
      return 0;
    case WM_ERASEBKGND:
      return Erase(window, wparam);
    case WM_SETICON:
    case WM_GETICON:
      return Icon(window, message, wparam, lparam);
    case WM_SETTEXT:
    case WM_GETTEXT:
    case WM_GETTEXTLENGTH:
      return TitleMessage(window, message, wparam, lparam);
    case WM_POINTERDOWN:
    case WM_POINTERUPDATE:
    case WM_POINTERUP:
      PointerAsMouse(window, message, lparam);
      return 0;
    default:
      return PlainAnswer(message);
  }
}
