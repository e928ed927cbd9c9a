// A machine with a window class whose windows write down what they are told.
#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "tests/support/machine_fixture.h"

namespace testing_support {

class OnMachineWithWindows : public OnMachine {
 protected:
  static constexpr WCHAR kClass[] = u"RecorderWnd";

  static std::vector<UINT>& Told() {
    static std::vector<UINT> told;
    return told;
  }
  static bool WasTold(UINT message) {
    for (UINT each : Told()) {
      if (each == message) return true;
    }
    return false;
  }
  static LRESULT CALLBACK Record(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    static std::mutex lock;
    {
      std::scoped_lock guard(lock);
      Told().push_back(message);
    }
    if (message == WM_NCCREATE && lparam && reinterpret_cast<CREATESTRUCTW*>(lparam)->lpCreateParams == RefuseNc())
      return 0;
    if (message == WM_CREATE && lparam && reinterpret_cast<CREATESTRUCTW*>(lparam)->lpCreateParams == RefuseCreate())
      return -1;
    if (message == WM_USER + 7) return static_cast<LRESULT>(wparam) + lparam;
    return DefWindowProcW(window, message, wparam, lparam);
  }
  static void* RefuseNc() { return reinterpret_cast<void*>(1); }
  static void* RefuseCreate() { return reinterpret_cast<void*>(2); }

  static ATOM Register(const WCHAR* name = kClass, int extra = 0) {
    WNDCLASSEXW values{};
    values.cbSize = sizeof values;
    values.lpfnWndProc = Record;
    values.lpszClassName = name;
    values.cbWndExtra = extra;
    return RegisterClassExW(&values);
  }
  static HWND Create(DWORD style = WS_POPUP, const WCHAR* title = u"title", HWND parent = nullptr,
                     void* parameter = nullptr) {
    return CreateWindowExW(0, kClass, title, style, 0, 0, 10, 10, parent, nullptr, nullptr, parameter);
  }
};

}  // namespace testing_support
