// What is to be painted, and where to: the calls that need a device context live with the drawing library.
#pragma once

#include <winuser/structures.h>

struct BLENDFUNCTION;

#define RDW_INVALIDATE 0x0001
#define RDW_INTERNALPAINT 0x0002
#define RDW_ERASE 0x0004
#define RDW_VALIDATE 0x0008
#define RDW_NOINTERNALPAINT 0x0010
#define RDW_NOERASE 0x0020
#define RDW_NOCHILDREN 0x0040
#define RDW_ALLCHILDREN 0x0080
#define RDW_UPDATENOW 0x0100
#define RDW_ERASENOW 0x0200
#define RDW_FRAME 0x0400
#define RDW_NOFRAME 0x0800

#define COLOR_WINDOW 5
#define COLOR_WINDOWTEXT 8
#define COLOR_WINDOWFRAME 6
#define COLOR_BTNFACE 15
#define COLOR_3DFACE COLOR_BTNFACE
#define COLOR_HIGHLIGHT 13
#define COLOR_HIGHLIGHTTEXT 14
#define COLOR_GRAYTEXT 17
#define COLOR_INFOTEXT 23
#define COLOR_INFOBK 24
#define COLOR_BTNTEXT 18
#define COLOR_BACKGROUND 1
#define COLOR_DESKTOP COLOR_BACKGROUND

BOOL WINAPI InvalidateRect(HWND window, const RECT* client, BOOL erase);
BOOL WINAPI ValidateRect(HWND window, const RECT* client);
BOOL WINAPI GetUpdateRect(HWND window, LPRECT client, BOOL erase);
BOOL WINAPI UpdateWindow(HWND window);
BOOL WINAPI RedrawWindow(HWND window, const RECT* client, HRGN region, UINT flags);

HDC WINAPI BeginPaint(HWND window, LPPAINTSTRUCT paint);
BOOL WINAPI EndPaint(HWND window, const PAINTSTRUCT* paint);
// Null is the screen, into which nothing can be drawn: a context to measure with.
HDC WINAPI GetDC(HWND window);
HDC WINAPI GetWindowDC(HWND window);
int WINAPI ReleaseDC(HWND window, HDC context);

// Only for WS_EX_LAYERED. The source's pixels are premultiplied (ULW_ALPHA) or taken as opaque (ULW_OPAQUE); colour
// keys are refused with ERROR_INVALID_PARAMETER.
BOOL WINAPI UpdateLayeredWindow(HWND window, HDC screen, POINT* position, SIZE* size, HDC source, POINT* from,
                                COLORREF key, BLENDFUNCTION* blend, DWORD flags);
BOOL WINAPI SetLayeredWindowAttributes(HWND window, COLORREF key, BYTE alpha, DWORD flags);

DWORD WINAPI GetSysColor(int index);
