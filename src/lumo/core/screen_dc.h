// The screen's (or a window's) device context for as long as the object lives.
#pragma once

#include <windows.h>

namespace lumo {

class ScreenDc {
 public:
  explicit ScreenDc(HWND window = nullptr) : window_(window), dc_(GetDC(window)) {}
  ~ScreenDc() {
    if (dc_) ReleaseDC(window_, dc_);
  }
  ScreenDc(const ScreenDc&) = delete;
  ScreenDc& operator=(const ScreenDc&) = delete;

  HDC Get() const { return dc_; }

 private:
  HWND window_;
  HDC dc_;
};

}  // namespace lumo
