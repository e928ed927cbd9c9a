// What the calls of windows and messages take and give.
#pragma once

#include <windef.h>

using WNDPROC = LRESULT(CALLBACK*)(HWND, UINT, WPARAM, LPARAM);
using TIMERPROC = void(CALLBACK*)(HWND, UINT, UINT_PTR, DWORD);
using WNDENUMPROC = BOOL(CALLBACK*)(HWND, LPARAM);
using MONITORENUMPROC = BOOL(CALLBACK*)(HMONITOR, HDC, LPRECT, LPARAM);

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

struct WINDOWPOS {
  HWND hwnd;
  HWND hwndInsertAfter;
  int x;
  int y;
  int cx;
  int cy;
  UINT flags;
};
using LPWINDOWPOS = WINDOWPOS*;
using PWINDOWPOS = WINDOWPOS*;

struct NCCALCSIZE_PARAMS {
  RECT rgrc[3];
  PWINDOWPOS lppos;
};
using LPNCCALCSIZE_PARAMS = NCCALCSIZE_PARAMS*;

struct MINMAXINFO {
  POINT ptReserved;
  POINT ptMaxSize;
  POINT ptMaxPosition;
  POINT ptMinTrackSize;
  POINT ptMaxTrackSize;
};
using PMINMAXINFO = MINMAXINFO*;
using LPMINMAXINFO = MINMAXINFO*;

struct WINDOWPLACEMENT {
  UINT length;
  UINT flags;
  UINT showCmd;
  POINT ptMinPosition;
  POINT ptMaxPosition;
  RECT rcNormalPosition;
};

struct STYLESTRUCT {
  DWORD styleOld;
  DWORD styleNew;
};

struct NMHDR {
  HWND hwndFrom;
  UINT_PTR idFrom;
  UINT code;
};
using LPNMHDR = NMHDR*;

struct PAINTSTRUCT {
  HDC hdc;
  BOOL fErase;
  RECT rcPaint;
  BOOL fRestore;
  BOOL fIncUpdate;
  BYTE rgbReserved[32];
};
using LPPAINTSTRUCT = PAINTSTRUCT*;

struct MONITORINFO {
  DWORD cbSize;
  RECT rcMonitor;
  RECT rcWork;
  DWORD dwFlags;
};
using LPMONITORINFO = MONITORINFO*;
