#include "winhost/window/device_state.h"

namespace winhost {

WORD DeviceState::Held() const {
  struct Row {
    int key;
    WORD flag;
  };
  constexpr Row kRows[] = {{VK_LBUTTON, MK_LBUTTON},
                           {VK_RBUTTON, MK_RBUTTON},
                           {VK_MBUTTON, MK_MBUTTON},
                           {VK_SHIFT, MK_SHIFT},
                           {VK_CONTROL, MK_CONTROL}};
  WORD held = 0;
  for (const Row& row : kRows) {
    if (keys[static_cast<std::size_t>(row.key)]) held |= row.flag;
  }
  return held;
}

DeviceState& TheDevices() {
  static DeviceState devices;
  return devices;
}

int ButtonKey(UINT message) {
  switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
      return VK_LBUTTON;
    case WM_RBUTTONDOWN:
    case WM_RBUTTONUP:
      return VK_RBUTTON;
    case WM_MBUTTONDOWN:
    case WM_MBUTTONUP:
      return VK_MBUTTON;
    default:
      return 0;
  }
}

bool IsButtonDown(UINT message) {
  return message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN || message == WM_MBUTTONDOWN;
}

}  // namespace winhost
