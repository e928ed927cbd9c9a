// Window handles and the two geometry structures.
#pragma once

#include <minwindef.h>
#include <winnt.h>

DECLARE_HANDLE(HWND);
DECLARE_HANDLE(HHOOK);
DECLARE_HANDLE(HICON);
using HCURSOR = HICON;
DECLARE_HANDLE(HMENU);
DECLARE_HANDLE(HBRUSH);
DECLARE_HANDLE(HDC);
DECLARE_HANDLE(HBITMAP);
DECLARE_HANDLE(HFONT);
DECLARE_HANDLE(HPEN);
DECLARE_HANDLE(HRGN);
DECLARE_HANDLE(HMONITOR);
using HGDIOBJ = void*;
using COLORREF = DWORD;

struct RECT {
  LONG left;
  LONG top;
  LONG right;
  LONG bottom;
};
using PRECT = RECT*;
using LPRECT = RECT*;
using LPCRECT = const RECT*;

struct POINT {
  LONG x;
  LONG y;
};
using PPOINT = POINT*;
using LPPOINT = POINT*;

struct SIZE {
  LONG cx;
  LONG cy;
};
using PSIZE = SIZE*;
using LPSIZE = SIZE*;
