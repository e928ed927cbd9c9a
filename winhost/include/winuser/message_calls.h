// Messages and timers.
#pragma once

#include <winuser/structures.h>

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

#define SMTO_NORMAL 0x0000
#define SMTO_BLOCK 0x0001
#define SMTO_ABORTIFHUNG 0x0002
#define SMTO_NOTIMEOUTIFNOTHUNG 0x0008

#define USER_TIMER_MINIMUM 0x0000000A
#define USER_TIMER_MAXIMUM 0x7FFFFFFF

BOOL WINAPI GetMessageW(LPMSG message, HWND window, UINT first, UINT last);
BOOL WINAPI PeekMessageW(LPMSG message, HWND window, UINT first, UINT last, UINT remove);
BOOL WINAPI WaitMessage();
// Posts WM_CHAR (WM_SYSCHAR) for a key press that is a character on a US keyboard, or on the display's.
BOOL WINAPI TranslateMessage(const MSG* message);
LRESULT WINAPI DispatchMessageW(const MSG* message);
void WINAPI PostQuitMessage(int exit_code);
BOOL WINAPI PostMessageW(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
BOOL WINAPI PostThreadMessageW(DWORD thread, UINT message, WPARAM wparam, LPARAM lparam);
LRESULT WINAPI SendMessageW(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
BOOL WINAPI SendNotifyMessageW(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
// The time-out is real time: a hung program does not get less of it on a machine whose clock stands.
LRESULT WINAPI SendMessageTimeoutW(HWND window, UINT message, WPARAM wparam, LPARAM lparam, UINT flags,
                                   UINT milliseconds, PDWORD_PTR result);
UINT WINAPI RegisterWindowMessageW(LPCWSTR name);
LONG WINAPI GetMessageTime();
DWORD WINAPI GetMessagePos();
DWORD WINAPI GetQueueStatus(UINT flags);
DWORD WINAPI MsgWaitForMultipleObjects(DWORD count, const HANDLE* handles, BOOL all, DWORD milliseconds,
                                       DWORD wake_mask);

UINT_PTR WINAPI SetTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC procedure);
BOOL WINAPI KillTimer(HWND window, UINT_PTR id);
