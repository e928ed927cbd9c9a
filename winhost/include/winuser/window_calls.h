// Window classes and windows: making, asking, placing, showing, naming, finding.
#pragma once

#include <winuser/structures.h>
#include <winuser/styles.h>

// A class belongs to the process and its module. Answers an atom, which serves in place of the name.
ATOM WINAPI RegisterClassExW(const WNDCLASSEXW* window_class);
BOOL WINAPI UnregisterClassW(LPCWSTR name_or_atom, HINSTANCE instance);
BOOL WINAPI GetClassInfoExW(HINSTANCE instance, LPCWSTR name_or_atom, WNDCLASSEXW* window_class);
ULONG_PTR WINAPI GetClassLongPtrW(HWND window, int index);
ULONG_PTR WINAPI SetClassLongPtrW(HWND window, int index, LONG_PTR value);

// The window belongs to the calling thread; WM_NCCREATE, WM_NCCALCSIZE and WM_CREATE come before this returns.
// CW_USEDEFAULT places a window at the work area's top left with three quarters of its size.
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
BOOL WINAPI IsChild(HWND parent, HWND window);
BOOL WINAPI EnableWindow(HWND window, BOOL enable);
HWND WINAPI GetParent(HWND window);
HWND WINAPI SetParent(HWND child, HWND parent);
HWND WINAPI GetAncestor(HWND window, UINT which);
HWND WINAPI GetWindow(HWND window, UINT which);
HWND WINAPI GetDesktopWindow();
int WINAPI GetDlgCtrlID(HWND window);
HWND WINAPI GetDlgItem(HWND parent, int id);
BOOL WINAPI SetWindowTextW(HWND window, LPCWSTR text);
int WINAPI GetWindowTextW(HWND window, LPWSTR text, int capacity);
int WINAPI GetWindowTextLengthW(HWND window);
int WINAPI GetClassNameW(HWND window, LPWSTR name, int capacity);
DWORD WINAPI GetWindowThreadProcessId(HWND window, LPDWORD process);
LONG_PTR WINAPI GetWindowLongPtrW(HWND window, int index);
LONG_PTR WINAPI SetWindowLongPtrW(HWND window, int index, LONG_PTR value);
LONG WINAPI GetWindowLongW(HWND window, int index);
LONG WINAPI SetWindowLongW(HWND window, int index, LONG value);
HANDLE WINAPI GetPropW(HWND window, LPCWSTR name_or_atom);
BOOL WINAPI SetPropW(HWND window, LPCWSTR name_or_atom, HANDLE value);
HANDLE WINAPI RemovePropW(HWND window, LPCWSTR name_or_atom);

// The first call of a process with SW_SHOWNORMAL, SW_SHOW or SW_SHOWDEFAULT is taken as it is: no start-up information
// overrides it.
BOOL WINAPI ShowWindow(HWND window, int show);
// A minimised window lies at (-32000, -32000); a maximised one covers what WM_GETMINMAXINFO leaves of the work area.
BOOL WINAPI SetWindowPos(HWND window, HWND after, int x, int y, int width, int height, UINT flags);
BOOL WINAPI MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint);
BOOL WINAPI GetWindowPlacement(HWND window, WINDOWPLACEMENT* placement);
BOOL WINAPI GetWindowRect(HWND window, LPRECT rectangle);
BOOL WINAPI GetClientRect(HWND window, LPRECT rectangle);
BOOL WINAPI ClientToScreen(HWND window, LPPOINT point);
BOOL WINAPI ScreenToClient(HWND window, LPPOINT point);
int WINAPI MapWindowPoints(HWND from, HWND to, LPPOINT points, UINT count);
BOOL WINAPI AdjustWindowRectEx(LPRECT rectangle, DWORD style, BOOL menu, DWORD ex_style);
HWND WINAPI WindowFromPoint(POINT screen);
HWND WINAPI ChildWindowFromPoint(HWND parent, POINT client);
// The window owns the region afterwards; null removes it.
int WINAPI SetWindowRgn(HWND window, HRGN region, BOOL redraw);
int WINAPI GetWindowRgn(HWND window, HRGN region);

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
HWND WINAPI GetFocus();
HWND WINAPI SetFocus(HWND window);
BOOL WINAPI AttachThreadInput(DWORD attach, DWORD to, BOOL attached);
