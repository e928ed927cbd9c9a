// A window with an object behind it that answers its messages. The dialogs and their parts are made of these.
#pragma once

#include <windows.h>

namespace winhost {

class WindowPart {
 public:
  WindowPart() = default;
  WindowPart(const WindowPart&) = delete;
  WindowPart& operator=(const WindowPart&) = delete;

  // Null before it is made and when it has been destroyed, by whomever.
  HWND window() const { return window_; }

 protected:
  // Its window is to be destroyed before the object ends.
  ~WindowPart() = default;

  struct Class {
    const WCHAR* name;
    UINT style;
    LPCWSTR cursor;
  };
  // False with the last error. `id` is a child's; the class is registered on first use.
  bool Create(const Class& kind, DWORD ex_style, DWORD style, const WCHAR* title, const RECT& place, HWND parent,
              int id);
  virtual LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) = 0;
  LRESULT Default(UINT message, WPARAM wparam, LPARAM lparam) {
    return DefWindowProcW(window_, message, wparam, lparam);
  }
  // Tells the parent in the way of controls.
  void Notify(WORD code) const;

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  HWND window_ = nullptr;
};

inline POINT PointOf(LPARAM lparam) { return {static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))}; }

}  // namespace winhost
