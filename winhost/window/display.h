// Where the windows of this process are seen. The calls come from the threads of the windows, without a lock held.
#pragma once

#include <windows.h>

namespace winhost {

class Display {
 public:
  // The machine's: in memory, unless VANTA_DISPLAY is "x11" or the fact "screen" says so, and the program draws.
  static Display& Current();

  virtual ~Display() = default;
  virtual SIZE Size() = 0;
  // A top-level window was shown, hidden, placed, put before others, named, shaped, enabled …
  virtual void Changed(HWND) {}
  // This part of its picture is new, in window coordinates.
  virtual void Painted(HWND, const RECT&) {}
  virtual void Ended(HWND) {}
  virtual void Activated(HWND) {}
  virtual void ShowCursor(HCURSOR) {}
  virtual void Beep() {}
};

}  // namespace winhost
