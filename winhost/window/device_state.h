// The pointer and the keys of this process, as its devices have them at this moment. Guarded by WaitLock().
#pragma once

#include <windows.h>

#include <array>

namespace winhost {

struct DeviceState {
  POINT pointer{};
  HWND under = nullptr;  // the top-level window that the pointer was over last
  std::array<bool, 256> keys{};
  std::array<bool, 256> pressed_since{};  // since GetAsyncKeyState asked
  HCURSOR cursor = nullptr;
  int cursor_shows = 0;

  // MK_… of the buttons and keys that are down.
  WORD Held() const;
};

DeviceState& TheDevices();

// The button's key and its two messages, for WM_LBUTTONDOWN, WM_RBUTTONUP …; 0 for a message of no button.
int ButtonKey(UINT message);
bool IsButtonDown(UINT message);

}  // namespace winhost
