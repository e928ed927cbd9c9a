// The common controls' registration. The machine's controls need none, so it succeeds for every known class.
// To fail: the fault plan, "InitCommonControlsEx"; a wrong structure size or no known class answers FALSE.
#pragma once

#include <windef.h>

struct INITCOMMONCONTROLSEX {
  DWORD dwSize;
  DWORD dwICC;
};
using LPINITCOMMONCONTROLSEX = INITCOMMONCONTROLSEX*;

#define ICC_LISTVIEW_CLASSES 0x1
#define ICC_TREEVIEW_CLASSES 0x2
#define ICC_BAR_CLASSES 0x4
#define ICC_TAB_CLASSES 0x8
#define ICC_UPDOWN_CLASS 0x10
#define ICC_PROGRESS_CLASS 0x20
#define ICC_HOTKEY_CLASS 0x40
#define ICC_ANIMATE_CLASS 0x80
#define ICC_WIN95_CLASSES 0xff
#define ICC_DATE_CLASSES 0x100
#define ICC_USEREX_CLASSES 0x200
#define ICC_COOL_CLASSES 0x400
#define ICC_INTERNET_CLASSES 0x800
#define ICC_PAGESCROLLER_CLASS 0x1000
#define ICC_NATIVEFNTCTL_CLASS 0x2000
#define ICC_STANDARD_CLASSES 0x4000
#define ICC_LINK_CLASS 0x8000

void WINAPI InitCommonControls();
BOOL WINAPI InitCommonControlsEx(const INITCOMMONCONTROLSEX* classes);
