// Window classes, windows, messages, timers.
//
// Promises: one window table a machine: FindWindowW sees the windows of all its live processes, handle values are
// unique among them, and messages posted or sent across processes arrive. A thread has its queue from its first
// message call. Sent messages are delivered before posted ones, these before WM_QUIT, and that before WM_TIMER. Timers
// and the waits for messages follow the machine's clock. Posted messages WM_USER…0x7FFF are written to the journal
// "messages".
// Simplifies: windows have no place on a screen and paint nothing; there is no input, so TranslateMessage has nothing
// to do; anybody may take the foreground. Titles have at most 511 characters. Pointers in parameters do not travel
// between processes. MsgWaitForMultipleObjects refuses `all` and ends for old messages as for new.
// To fail: the fault plan: "RegisterClassExW", "CreateWindowExW", "FindWindowW", "SetTimer" (subject: the class name),
// "PostMessageW", "PostThreadMessageW" (subject: the message's number in decimal).
#pragma once

#include <windef.h>

#define MAKEINTRESOURCEW(i) (reinterpret_cast<LPWSTR>(static_cast<ULONG_PTR>(static_cast<WORD>(i))))
#define MAKEINTRESOURCE MAKEINTRESOURCEW
#define IS_INTRESOURCE(r) ((reinterpret_cast<ULONG_PTR>(r) >> 16) == 0)
#define RT_CURSOR MAKEINTRESOURCEW(1)
#define RT_BITMAP MAKEINTRESOURCEW(2)
#define RT_ICON MAKEINTRESOURCEW(3)
#define RT_STRING MAKEINTRESOURCEW(6)
#define RT_RCDATA MAKEINTRESOURCEW(10)
#define RT_GROUP_CURSOR MAKEINTRESOURCEW(12)
#define RT_GROUP_ICON MAKEINTRESOURCEW(14)
#define RT_VERSION MAKEINTRESOURCEW(16)
#define RT_MANIFEST MAKEINTRESOURCEW(24)
#define CREATEPROCESS_MANIFEST_RESOURCE_ID MAKEINTRESOURCEW(1)

using WNDPROC = LRESULT(CALLBACK*)(HWND, UINT, WPARAM, LPARAM);
using TIMERPROC = void(CALLBACK*)(HWND, UINT, UINT_PTR, DWORD);
using WNDENUMPROC = BOOL(CALLBACK*)(HWND, LPARAM);

struct WNDCLASSEXW {
  UINT cbSize;
  UINT style;
  WNDPROC lpfnWndProc;
  int cbClsExtra;
  int cbWndExtra;
  HINSTANCE hInstance;
  HICON hIcon;
  HCURSOR hCursor;
  HBRUSH hbrBackground;
  LPCWSTR lpszMenuName;
  LPCWSTR lpszClassName;
  HICON hIconSm;
};
using WNDCLASSEX = WNDCLASSEXW;

struct CREATESTRUCTW {
  LPVOID lpCreateParams;
  HINSTANCE hInstance;
  HMENU hMenu;
  HWND hwndParent;
  int cy;
  int cx;
  int y;
  int x;
  LONG style;
  LPCWSTR lpszName;
  LPCWSTR lpszClass;
  DWORD dwExStyle;
};
using CREATESTRUCT = CREATESTRUCTW;
using LPCREATESTRUCTW = CREATESTRUCTW*;
using LPCREATESTRUCT = CREATESTRUCTW*;

struct MSG {
  HWND hwnd;
  UINT message;
  WPARAM wParam;
  LPARAM lParam;
  DWORD time;
  POINT pt;
};
using PMSG = MSG*;
using LPMSG = MSG*;

#define CS_VREDRAW 0x0001
#define CS_HREDRAW 0x0002
#define CS_DBLCLKS 0x0008
#define CS_DROPSHADOW 0x00020000
#define CS_GLOBALCLASS 0x4000

#define WS_OVERLAPPED 0x00000000L
#define WS_POPUP 0x80000000L
#define WS_CHILD 0x40000000L
#define WS_MINIMIZE 0x20000000L
#define WS_VISIBLE 0x10000000L
#define WS_DISABLED 0x08000000L
#define WS_CLIPSIBLINGS 0x04000000L
#define WS_CLIPCHILDREN 0x02000000L
#define WS_MAXIMIZE 0x01000000L
#define WS_CAPTION 0x00C00000L
#define WS_BORDER 0x00800000L
#define WS_DLGFRAME 0x00400000L
#define WS_SYSMENU 0x00080000L
#define WS_THICKFRAME 0x00040000L
#define WS_MINIMIZEBOX 0x00020000L
#define WS_MAXIMIZEBOX 0x00010000L
#define WS_OVERLAPPEDWINDOW (WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX)
#define WS_EX_TOPMOST 0x00000008L
#define WS_EX_TOOLWINDOW 0x00000080L
#define WS_EX_APPWINDOW 0x00040000L
#define WS_EX_LAYERED 0x00080000
#define WS_EX_NOACTIVATE 0x08000000L
#define CW_USEDEFAULT (static_cast<int>(0x80000000))
#define HWND_MESSAGE (reinterpret_cast<HWND>(static_cast<LONG_PTR>(-3)))
#define HWND_BROADCAST (reinterpret_cast<HWND>(static_cast<LONG_PTR>(0xffff)))

#define WM_NULL 0x0000
#define WM_CREATE 0x0001
#define WM_DESTROY 0x0002
#define WM_MOVE 0x0003
#define WM_SIZE 0x0005
#define WM_ACTIVATE 0x0006
#define WM_SETFOCUS 0x0007
#define WM_KILLFOCUS 0x0008
#define WM_ENABLE 0x000A
#define WM_SETTEXT 0x000C
#define WM_GETTEXT 0x000D
#define WM_GETTEXTLENGTH 0x000E
#define WM_PAINT 0x000F
#define WM_CLOSE 0x0010
#define WM_QUERYENDSESSION 0x0011
#define WM_QUIT 0x0012
#define WM_ENDSESSION 0x0016
#define WM_SHOWWINDOW 0x0018
#define WM_ACTIVATEAPP 0x001C
#define WM_NCCREATE 0x0081
#define WM_NCDESTROY 0x0082
#define WM_NCMOUSEMOVE 0x00A0
#define WM_SYSCOMMAND 0x0112
#define WM_TIMER 0x0113
#define WM_MOUSEMOVE 0x0200
#define WM_COPYDATA 0x004A
#define WM_USER 0x0400
#define WM_APP 0x8000

#define WA_INACTIVE 0
#define WA_ACTIVE 1
#define WA_CLICKACTIVE 2
#define SC_CLOSE 0xF060
#define SIZE_RESTORED 0
#define SIZE_MINIMIZED 1
#define SIZE_MAXIMIZED 2

#define SW_HIDE 0
#define SW_SHOWNORMAL 1
#define SW_NORMAL 1
#define SW_SHOWMINIMIZED 2
#define SW_SHOWMAXIMIZED 3
#define SW_MAXIMIZE 3
#define SW_SHOWNOACTIVATE 4
#define SW_SHOW 5
#define SW_MINIMIZE 6
#define SW_SHOWMINNOACTIVE 7
#define SW_SHOWNA 8
#define SW_RESTORE 9
#define SW_SHOWDEFAULT 10

#define GWL_STYLE (-16)
#define GWL_EXSTYLE (-20)
#define GWLP_WNDPROC (-4)
#define GWLP_HINSTANCE (-6)
#define GWLP_HWNDPARENT (-8)
#define GWLP_ID (-12)
#define GWLP_USERDATA (-21)

#define PM_NOREMOVE 0x0000
#define PM_REMOVE 0x0001
#define PM_NOYIELD 0x0002

#define QS_KEY 0x0001
#define QS_MOUSEMOVE 0x0002
#define QS_MOUSEBUTTON 0x0004
#define QS_MOUSE (QS_MOUSEMOVE | QS_MOUSEBUTTON)
#define QS_INPUT (QS_MOUSE | QS_KEY | QS_RAWINPUT | QS_TOUCH | QS_POINTER)
#define QS_POSTMESSAGE 0x0008
#define QS_TIMER 0x0010
#define QS_PAINT 0x0020
#define QS_SENDMESSAGE 0x0040
#define QS_HOTKEY 0x0080
#define QS_ALLPOSTMESSAGE 0x0100
#define QS_RAWINPUT 0x0400
#define QS_TOUCH 0x0800
#define QS_POINTER 0x1000
#define QS_ALLEVENTS (QS_INPUT | QS_POSTMESSAGE | QS_TIMER | QS_PAINT | QS_HOTKEY)
#define QS_ALLINPUT (QS_ALLEVENTS | QS_SENDMESSAGE)

#define USER_TIMER_MINIMUM 0x0000000A
#define USER_TIMER_MAXIMUM 0x7FFFFFFF

// A class belongs to the process and its module. Answers an atom, which serves in place of the name.
ATOM WINAPI RegisterClassExW(const WNDCLASSEXW* window_class);
BOOL WINAPI UnregisterClassW(LPCWSTR name_or_atom, HINSTANCE instance);
BOOL WINAPI GetClassInfoExW(HINSTANCE instance, LPCWSTR name_or_atom, WNDCLASSEXW* window_class);

// The window belongs to the calling thread; WM_NCCREATE and WM_CREATE come before this returns.
HWND WINAPI CreateWindowExW(DWORD ex_style, LPCWSTR class_name_or_atom, LPCWSTR title, DWORD style, int x, int y,
                            int width, int height, HWND parent, HMENU menu, HINSTANCE instance, LPVOID parameter);
BOOL WINAPI DestroyWindow(HWND window);
LRESULT WINAPI DefWindowProcW(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
LRESULT WINAPI CallWindowProcW(WNDPROC procedure, HWND window, UINT message, WPARAM wparam, LPARAM lparam);

BOOL WINAPI IsWindow(HWND window);
BOOL WINAPI IsWindowVisible(HWND window);
BOOL WINAPI IsWindowEnabled(HWND window);
BOOL WINAPI IsIconic(HWND window);
BOOL WINAPI IsZoomed(HWND window);
BOOL WINAPI ShowWindow(HWND window, int show);
BOOL WINAPI EnableWindow(HWND window, BOOL enable);
HWND WINAPI GetParent(HWND window);
BOOL WINAPI SetWindowTextW(HWND window, LPCWSTR text);
int WINAPI GetWindowTextW(HWND window, LPWSTR text, int capacity);
int WINAPI GetWindowTextLengthW(HWND window);
int WINAPI GetClassNameW(HWND window, LPWSTR name, int capacity);
DWORD WINAPI GetWindowThreadProcessId(HWND window, LPDWORD process);
LONG_PTR WINAPI GetWindowLongPtrW(HWND window, int index);
LONG_PTR WINAPI SetWindowLongPtrW(HWND window, int index, LONG_PTR value);
LONG WINAPI GetWindowLongW(HWND window, int index);
LONG WINAPI SetWindowLongW(HWND window, int index, LONG value);

// Top-level windows of all processes, foremost first; class and title without regard to case, null: any.
HWND WINAPI FindWindowW(LPCWSTR class_name_or_atom, LPCWSTR title);
// `parent` HWND_MESSAGE looks among the message-only windows.
HWND WINAPI FindWindowExW(HWND parent, HWND after, LPCWSTR class_name_or_atom, LPCWSTR title);
BOOL WINAPI EnumWindows(WNDENUMPROC visit, LPARAM parameter);
BOOL WINAPI EnumThreadWindows(DWORD thread, WNDENUMPROC visit, LPARAM parameter);

HWND WINAPI GetForegroundWindow();
BOOL WINAPI SetForegroundWindow(HWND window);
BOOL WINAPI BringWindowToTop(HWND window);
HWND WINAPI GetActiveWindow();
HWND WINAPI SetActiveWindow(HWND window);
BOOL WINAPI AttachThreadInput(DWORD attach, DWORD to, BOOL attached);

BOOL WINAPI GetMessageW(LPMSG message, HWND window, UINT first, UINT last);
BOOL WINAPI PeekMessageW(LPMSG message, HWND window, UINT first, UINT last, UINT remove);
BOOL WINAPI WaitMessage();
BOOL WINAPI TranslateMessage(const MSG* message);
LRESULT WINAPI DispatchMessageW(const MSG* message);
void WINAPI PostQuitMessage(int exit_code);
BOOL WINAPI PostMessageW(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
BOOL WINAPI PostThreadMessageW(DWORD thread, UINT message, WPARAM wparam, LPARAM lparam);
LRESULT WINAPI SendMessageW(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
BOOL WINAPI SendNotifyMessageW(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
UINT WINAPI RegisterWindowMessageW(LPCWSTR name);
LONG WINAPI GetMessageTime();
DWORD WINAPI GetQueueStatus(UINT flags);
DWORD WINAPI MsgWaitForMultipleObjects(DWORD count, const HANDLE* handles, BOOL all, DWORD milliseconds,
                                       DWORD wake_mask);

UINT_PTR WINAPI SetTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC procedure);
BOOL WINAPI KillTimer(HWND window, UINT_PTR id);
