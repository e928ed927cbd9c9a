// Sees every message of a window before its handler does.
#pragma once

#include <windows.h>

namespace lumo {

class IMessageFilter {
 public:
  // Setting `handled` makes the result the message's answer; nobody else sees it then.
  virtual LRESULT FilterMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam, bool* handled) = 0;

 protected:
  ~IMessageFilter() = default;
};

}  // namespace lumo
