// Windows, messages, input, and the screen they live on. The areas are headers of their own in winuser/.
//
// Promises: one window table a machine: FindWindowW sees the windows of all its live processes, handle values are
// unique among them, places and titles are known to all, and messages posted or sent across processes arrive. A thread
// has its queue from its first message call. Sent messages are delivered before posted ones, these before input, input
// before WM_QUIT, then WM_PAINT, then WM_TIMER. Timers, double clicks, hovering and the waits for messages follow the
// machine's clock. Posted messages WM_USER…0x7FFF are written to the journal "messages".
// The screen is a picture in memory (winhost/window/screen.h), into which tests send input and which they save; with
// VANTA_DISPLAY=x11 it is the X display that DISPLAY names, a top-level window there for each one here.
// Simplifies: a window has no frame, caption bar, menu or scroll bar of the system's own: unless WM_NCCALCSIZE says
// otherwise all of it is client area. Windows draw into their own picture, so uncovering one needs no painting. Anybody
// may take the foreground. Each process has its own pointer and keys. Titles have at most 511 characters. Pointers in
// parameters do not travel between processes. MsgWaitForMultipleObjects refuses `all` and ends for old messages as for
// new. There is no input method.
// To fail: the fault plan: "RegisterClassExW", "CreateWindowExW", "FindWindowW", "SetTimer" (subject: the class name),
// "PostMessageW", "PostThreadMessageW" (subject: the message's number in decimal), "SetCapture", "SetWindowPos",
// "BeginPaint", "GetDC", "UpdateLayeredWindow" (subject: the class name), "LoadImageW" (subject: "#number" or name).
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

#define MAKEWPARAM(low, high) ((WPARAM)(DWORD)MAKELONG(low, high))
#define MAKELPARAM(low, high) ((LPARAM)(DWORD)MAKELONG(low, high))
#define MAKELRESULT(low, high) ((LRESULT)(DWORD)MAKELONG(low, high))

#include <winuser/drawing.h>
#include <winuser/input.h>
#include <winuser/message_calls.h>
#include <winuser/messages.h>
#include <winuser/painting.h>
#include <winuser/screens.h>
#include <winuser/structures.h>
#include <winuser/styles.h>
#include <winuser/window_calls.h>
