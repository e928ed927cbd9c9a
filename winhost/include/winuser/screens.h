// The desktop's measures, its monitors, icons, cursors and rectangles.
#pragma once

#include <winuser/structures.h>

#define SM_CXSCREEN 0
#define SM_CYSCREEN 1
#define SM_CXVSCROLL 2
#define SM_CYHSCROLL 3
#define SM_CYCAPTION 4
#define SM_CXBORDER 5
#define SM_CYBORDER 6
#define SM_CXICON 11
#define SM_CYICON 12
#define SM_CXCURSOR 13
#define SM_CYCURSOR 14
#define SM_CXFULLSCREEN 16
#define SM_CYFULLSCREEN 17
#define SM_CXFRAME 32
#define SM_CYFRAME 33
#define SM_CXSIZEFRAME SM_CXFRAME
#define SM_CYSIZEFRAME SM_CYFRAME
#define SM_CXMINTRACK 34
#define SM_CYMINTRACK 35
#define SM_CXDOUBLECLK 36
#define SM_CYDOUBLECLK 37
#define SM_CXSMICON 49
#define SM_CYSMICON 50
#define SM_CXMAXIMIZED 61
#define SM_CYMAXIMIZED 62
#define SM_CXMAXTRACK 59
#define SM_CYMAXTRACK 60
#define SM_CXDRAG 68
#define SM_CYDRAG 69
#define SM_XVIRTUALSCREEN 76
#define SM_YVIRTUALSCREEN 77
#define SM_CXVIRTUALSCREEN 78
#define SM_CYVIRTUALSCREEN 79
#define SM_CMONITORS 80
#define SM_REMOTESESSION 0x1000
#define SM_DIGITIZER 94
#define SM_MAXIMUMTOUCHES 95
#define SM_SWAPBUTTON 23
#define SM_MOUSEPRESENT 19
#define SM_TABLETPC 86
#define SM_CXPADDEDBORDER 92

#define MONITOR_DEFAULTTONULL 0x00000000
#define MONITOR_DEFAULTTOPRIMARY 0x00000001
#define MONITOR_DEFAULTTONEAREST 0x00000002
#define MONITORINFOF_PRIMARY 0x00000001

#define SPI_GETWORKAREA 0x0030
#define SPI_GETMOUSEHOVERTIME 0x0066
#define SPI_GETNONCLIENTMETRICS 0x0029

#define IMAGE_BITMAP 0
#define IMAGE_ICON 1
#define IMAGE_CURSOR 2
#define LR_DEFAULTCOLOR 0x0000
#define LR_LOADFROMFILE 0x0010
#define LR_DEFAULTSIZE 0x0040
#define LR_SHARED 0x8000
#define LR_CREATEDIBSECTION 0x2000

#define IDC_ARROW MAKEINTRESOURCEW(32512)
#define IDC_IBEAM MAKEINTRESOURCEW(32513)
#define IDC_WAIT MAKEINTRESOURCEW(32514)
#define IDC_CROSS MAKEINTRESOURCEW(32515)
#define IDC_SIZENWSE MAKEINTRESOURCEW(32642)
#define IDC_SIZENESW MAKEINTRESOURCEW(32643)
#define IDC_SIZEWE MAKEINTRESOURCEW(32644)
#define IDC_SIZENS MAKEINTRESOURCEW(32645)
#define IDC_SIZEALL MAKEINTRESOURCEW(32646)
#define IDC_NO MAKEINTRESOURCEW(32648)
#define IDC_HAND MAKEINTRESOURCEW(32649)
#define IDI_APPLICATION MAKEINTRESOURCEW(32512)

#define MB_OK 0x00000000
#define MB_ICONHAND 0x00000010

// One monitor, the primary one, from (0, 0): the fact "screen", else 1920 by 1080, or the display's root window. The
// work area is all of it but the fact's "taskbar" pixels at the bottom. Sizes that follow the DPI follow the fact "dpi"
// once the process is DPI-aware, else 96.
int WINAPI GetSystemMetrics(int index);
BOOL WINAPI SystemParametersInfoW(UINT action, UINT parameter, PVOID data, UINT update);
HMONITOR WINAPI MonitorFromWindow(HWND window, DWORD flags);
HMONITOR WINAPI MonitorFromPoint(POINT point, DWORD flags);
HMONITOR WINAPI MonitorFromRect(LPCRECT rectangle, DWORD flags);
BOOL WINAPI GetMonitorInfoW(HMONITOR monitor, LPMONITORINFO info);
BOOL WINAPI EnumDisplayMonitors(HDC context, LPCRECT clip, MONITORENUMPROC visit, LPARAM parameter);
BOOL WINAPI SetProcessDPIAware();

// Icons come from a module's resources: the picture of the group whose size is nearest. Shared ones need no ending.
HANDLE WINAPI LoadImageW(HINSTANCE instance, LPCWSTR name, UINT type, int width, int height, UINT flags);
HICON WINAPI LoadIconW(HINSTANCE instance, LPCWSTR name);
BOOL WINAPI DestroyIcon(HICON icon);
// The system's own cursors (`instance` null) and no others.
HCURSOR WINAPI LoadCursorW(HINSTANCE instance, LPCWSTR name);
HCURSOR WINAPI SetCursor(HCURSOR cursor);
HCURSOR WINAPI GetCursor();
int WINAPI ShowCursor(BOOL show);
BOOL WINAPI MessageBeep(UINT type);

BOOL WINAPI SetRect(LPRECT rectangle, int left, int top, int right, int bottom);
BOOL WINAPI SetRectEmpty(LPRECT rectangle);
BOOL WINAPI CopyRect(LPRECT to, const RECT* from);
BOOL WINAPI InflateRect(LPRECT rectangle, int dx, int dy);
BOOL WINAPI OffsetRect(LPRECT rectangle, int dx, int dy);
BOOL WINAPI IntersectRect(LPRECT common, const RECT* a, const RECT* b);
BOOL WINAPI UnionRect(LPRECT both, const RECT* a, const RECT* b);
BOOL WINAPI SubtractRect(LPRECT rest, const RECT* from, const RECT* taken);
BOOL WINAPI IsRectEmpty(const RECT* rectangle);
BOOL WINAPI EqualRect(const RECT* a, const RECT* b);
BOOL WINAPI PtInRect(const RECT* rectangle, POINT point);
