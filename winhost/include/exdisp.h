// The shell's list of its windows; of these there is the desktop.
//
// Promises: FindWindowSW finds the desktop, which leads to the shell's IShellDispatch2, unless the fact
// "desktop_shell" is false: then it answers S_FALSE and no object.
// Simplifies: there are no folder windows.
// To fail: CoCreateInstance of "CLSID_ShellWindows"; the fault plan: "IShellWindows::FindWindowSW".
#pragma once

#include <ole2.h>

inline constexpr CLSID CLSID_ShellWindows = {
    0x9ba05972, 0xf6a8, 0x11cf, {0xa4, 0x42, 0x00, 0xa0, 0xc9, 0x0a, 0x8f, 0x39}};

enum ShellWindowTypeConstants {
  SWC_EXPLORER = 0,
  SWC_BROWSER = 1,
  SWC_3RDPARTY = 2,
  SWC_CALLBACK = 4,
  SWC_DESKTOP = 8,
};

enum ShellWindowFindWindowOptions {
  SWFO_NEEDDISPATCH = 1,
  SWFO_INCLUDEPENDING = 2,
  SWFO_COOKIEPASSED = 4,
};

struct IShellWindows : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE FindWindowSW(VARIANT* location, VARIANT* root, int window_class, LONG* window,
                                                 int options, IDispatch** dispatch) = 0;
};
inline constexpr IID IID_IShellWindows = {0x85cb6900, 0x4d95, 0x11cf, {0x96, 0x0c, 0x00, 0x80, 0xc7, 0xf4, 0xee, 0x85}};
