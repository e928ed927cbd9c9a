// The common controls: their registration, and the one control that the machine has, the tooltip. Programs that link
// the drawing library have its class "tooltips_class32" without registering; it answers the messages below and draws
// itself. Tips of tools that are not tracked show after the initial delay of the machine's clock, if the program relays
// its mouse messages (TTM_RELAYEVENT): TTF_SUBCLASS is refused, as are texts by callback and from resources. Balloons
// are boxes like the others.
// To fail: the fault plan, "InitCommonControlsEx"; a wrong structure size or no known class answers FALSE.
#pragma once

#include <windef.h>
#include <winuser.h>

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

#define TOOLTIPS_CLASSW TEXT("tooltips_class32")
#define TOOLTIPS_CLASS TOOLTIPS_CLASSW
#define LPSTR_TEXTCALLBACKW (reinterpret_cast<LPWSTR>(static_cast<INT_PTR>(-1)))

#define TTS_ALWAYSTIP 0x1
#define TTS_NOPREFIX 0x2
#define TTS_NOANIMATE 0x10
#define TTS_NOFADE 0x20
#define TTS_BALLOON 0x40
#define TTF_IDISHWND 0x1
#define TTF_CENTERTIP 0x2
#define TTF_RTLREADING 0x4
#define TTF_SUBCLASS 0x10
#define TTF_TRACK 0x20
#define TTF_ABSOLUTE 0x80
#define TTF_TRANSPARENT 0x100
#define TTDT_AUTOMATIC 0
#define TTDT_RESHOW 1
#define TTDT_AUTOPOP 2
#define TTDT_INITIAL 3
#define TTM_ACTIVATE (WM_USER + 1)
#define TTM_SETDELAYTIME (WM_USER + 3)
#define TTM_RELAYEVENT (WM_USER + 7)
#define TTM_GETTOOLCOUNT (WM_USER + 13)
#define TTM_WINDOWFROMPOINT (WM_USER + 16)
#define TTM_TRACKACTIVATE (WM_USER + 17)
#define TTM_TRACKPOSITION (WM_USER + 18)
#define TTM_SETTIPBKCOLOR (WM_USER + 19)
#define TTM_SETTIPTEXTCOLOR (WM_USER + 20)
#define TTM_GETDELAYTIME (WM_USER + 21)
#define TTM_GETTIPBKCOLOR (WM_USER + 22)
#define TTM_GETTIPTEXTCOLOR (WM_USER + 23)
#define TTM_SETMAXTIPWIDTH (WM_USER + 24)
#define TTM_GETMAXTIPWIDTH (WM_USER + 25)
#define TTM_SETMARGIN (WM_USER + 26)
#define TTM_GETMARGIN (WM_USER + 27)
#define TTM_POP (WM_USER + 28)
#define TTM_UPDATE (WM_USER + 29)
#define TTM_GETBUBBLESIZE (WM_USER + 30)
#define TTM_ADJUSTRECT (WM_USER + 31)
#define TTM_ADDTOOLW (WM_USER + 50)
#define TTM_DELTOOLW (WM_USER + 51)
#define TTM_NEWTOOLRECTW (WM_USER + 52)
#define TTM_GETTOOLINFOW (WM_USER + 53)
#define TTM_SETTOOLINFOW (WM_USER + 54)
#define TTM_HITTESTW (WM_USER + 55)
#define TTM_GETTEXTW (WM_USER + 56)
#define TTM_UPDATETIPTEXTW (WM_USER + 57)
#define TTM_ENUMTOOLSW (WM_USER + 58)
#define TTM_GETCURRENTTOOLW (WM_USER + 59)
#define TTN_SHOW (TTN_FIRST - 1)
#define TTN_POP (TTN_FIRST - 2)
#define TTM_ADDTOOL TTM_ADDTOOLW
#define TTM_DELTOOL TTM_DELTOOLW
#define TTM_NEWTOOLRECT TTM_NEWTOOLRECTW
#define TTM_GETTOOLINFO TTM_GETTOOLINFOW
#define TTM_SETTOOLINFO TTM_SETTOOLINFOW
#define TTM_UPDATETIPTEXT TTM_UPDATETIPTEXTW
#define TTN_FIRST (0U - 520U)
#define TTN_GETDISPINFOW (TTN_FIRST - 10)

struct TTTOOLINFOW {
  UINT cbSize;
  UINT uFlags;
  HWND hwnd;
  UINT_PTR uId;
  RECT rect;  // client coordinates of hwnd
  HINSTANCE hinst;
  LPWSTR lpszText;
  LPARAM lParam;
  void* lpReserved;
};
using TTTOOLINFO = TTTOOLINFOW;
using TOOLINFOW = TTTOOLINFOW;
using TOOLINFO = TTTOOLINFOW;
using LPTOOLINFOW = TTTOOLINFOW*;
#define TTTOOLINFOW_V1_SIZE offsetof(TTTOOLINFOW, lParam)
#define TTTOOLINFOW_V2_SIZE offsetof(TTTOOLINFOW, lpReserved)
#define TTTOOLINFOW_V3_SIZE sizeof(TTTOOLINFOW)
