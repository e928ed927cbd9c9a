#include "winhost/dialogs/window_part.h"

namespace winhost {
namespace {

// The object whose window CreateWindowExW is making. Others' windows of the same classes have none behind them.
thread_local WindowPart* t_being_made = nullptr;

}  // namespace

bool WindowPart::Create(const Class& kind, DWORD ex_style, DWORD style, const WCHAR* title, const RECT& place,
                        HWND parent, int id) {
  WNDCLASSEXW values{};
  values.cbSize = sizeof values;
  values.style = kind.style | CS_GLOBALCLASS;
  values.lpfnWndProc = Procedure;
  values.cbWndExtra = sizeof(void*);
  values.hCursor = LoadCursorW(nullptr, kind.cursor);
  values.lpszClassName = kind.name;
  if (!RegisterClassExW(&values) && GetLastError() != ERROR_CLASS_ALREADY_EXISTS) return false;
  t_being_made = this;
  const auto menu = reinterpret_cast<HMENU>(static_cast<LONG_PTR>(id));
  CreateWindowExW(ex_style, kind.name, title, style, place.left, place.top, place.right - place.left,
                  place.bottom - place.top, parent, menu, nullptr, nullptr);
  t_being_made = nullptr;
  return window_ != nullptr;
}

LRESULT CALLBACK WindowPart::Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_NCCREATE && t_being_made) {
    WindowPart* const made = t_being_made;
    t_being_made = nullptr;
    made->window_ = window;
    SetWindowLongPtrW(window, 0, reinterpret_cast<LONG_PTR>(made));
  }
  auto* const part = reinterpret_cast<WindowPart*>(GetWindowLongPtrW(window, 0));
  if (!part) return DefWindowProcW(window, message, wparam, lparam);
  const LRESULT answer = part->Handle(message, wparam, lparam);
  if (message == WM_NCDESTROY) {
    SetWindowLongPtrW(window, 0, 0);
    part->window_ = nullptr;
  }
  return answer;
}

void WindowPart::Notify(WORD code) const {
  const auto id = static_cast<WORD>(GetDlgCtrlID(window_));
  SendMessageW(GetParent(window_), WM_COMMAND, MAKEWPARAM(id, code), reinterpret_cast<LPARAM>(window_));
}

}  // namespace winhost
