// Touch and pen, where the system has them. One contact is followed; while it is, the mouse messages that the system
// makes of it are passed over.
#include "base/late_function.h"
#include "lumo/controls/control_base.h"
#include "lumo/core/window.h"

#include <windowsx.h>

namespace lumo {
namespace {

constinit vanta::LateFunction<BOOL(WINAPI*)(HWND, ULONG)> register_touch(TEXT("user32.dll"), "RegisterTouchWindow");
constinit vanta::LateFunction<BOOL(WINAPI*)(HWND)> unregister_touch(TEXT("user32.dll"), "UnregisterTouchWindow");
constinit vanta::LateFunction<BOOL(WINAPI*)(HTOUCHINPUT, UINT, TOUCHINPUT*, int)> get_touch_input(TEXT("user32.dll"),
                                                                                                  "GetTouchInputInfo");
constinit vanta::LateFunction<BOOL(WINAPI*)(HTOUCHINPUT)> close_touch_input(TEXT("user32.dll"),
                                                                            "CloseTouchInputHandle");
constinit vanta::LateFunction<BOOL(WINAPI*)(UINT32, POINTER_INPUT_TYPE*)> get_pointer_type(TEXT("user32.dll"),
                                                                                           "GetPointerType");

constexpr UINT kMostContacts = 32;
constexpr LONG kTouchUnit = 100;  // touch coordinates are hundredths of a device pixel

bool IsTouchOrPen(WPARAM wParam) {
  const auto call = get_pointer_type.Get();
  POINTER_INPUT_TYPE type = PT_POINTER;
  return call && call(GET_POINTERID_WPARAM(wParam), &type) && (type == PT_TOUCH || type == PT_PEN);
}

POINT ClientPoint(HWND window, LPARAM lParam) {
  POINT point = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
  ScreenToClient(window, &point);
  return point;
}

}  // namespace

void Window::RegisterTouch(bool registered) {
  if (registered) {
    if (const auto call = register_touch.Get()) call(handle_, 0);
  } else if (const auto call = unregister_touch.Get()) {
    call(handle_);
  }
}

void Window::TouchDown(POINT point) {
  const WeakRef<Window> alive(this);
  ::SetFocus(handle_);
  if (!alive || !handle_) return;
  pointer_ = point;
  touch_target_ = ControlAt(point);
  if (!touch_target_) return;
  SetCapture(handle_);
  Deliver(touch_target_, EventTouchDown, 0, 0, point);
}

void Window::TouchMove(POINT point) {
  pointer_ = point;
  Deliver(touch_target_, EventTouchMove, 0, 0, point);
}

void Window::TouchUp(POINT point) {
  pointer_ = point;
  ControlBase* const target = std::exchange(touch_target_, nullptr);
  if (GetCapture() == handle_) ReleaseCapture();
  Deliver(target, EventTouchUp, 0, 0, point);
}

LRESULT Window::OnTouch(WPARAM wParam, LPARAM lParam, bool* handled) {
  const auto read = get_touch_input.Get();
  const UINT count = LOWORD(wParam);
  TOUCHINPUT contacts[kMostContacts] = {};
  const auto input = reinterpret_cast<HTOUCHINPUT>(lParam);
  if (!read || count == 0 || count > kMostContacts || !read(input, count, contacts, sizeof contacts[0])) return 0;
  *handled = true;
  if (const auto close = close_touch_input.Get()) close(input);
  const WeakRef<Window> alive(this);
  for (UINT i = 0; i < count && alive && handle_; ++i) {
    const TOUCHINPUT& contact = contacts[i];
    POINT point = {contact.x / kTouchUnit, contact.y / kTouchUnit};
    ScreenToClient(handle_, &point);
    // A second finger starts nothing while the first is down.
    if (contact.dwFlags & TOUCHEVENTF_DOWN && !touch_target_) {
      touch_contact_ = contact.dwID;
      TouchDown(point);
    } else if (contact.dwID != touch_contact_) {
      continue;
    } else if (contact.dwFlags & TOUCHEVENTF_UP) {
      TouchUp(point);
    } else if (contact.dwFlags & TOUCHEVENTF_MOVE) {
      TouchMove(point);
    }
  }
  return 0;
}

LRESULT Window::OnPointerDown(WPARAM wParam, LPARAM lParam, bool* handled) {
  if (!IsTouchOrPen(wParam)) return 0;
  *handled = true;
  if (touch_target_) return 0;
  touch_contact_ = GET_POINTERID_WPARAM(wParam);
  TouchDown(ClientPoint(handle_, lParam));
  return 0;
}

LRESULT Window::OnPointerUpdate(WPARAM wParam, LPARAM lParam, bool* handled) {
  if (!touch_target_ || GET_POINTERID_WPARAM(wParam) != touch_contact_) return 0;
  *handled = true;
  TouchMove(ClientPoint(handle_, lParam));
  return 0;
}

LRESULT Window::OnPointerUp(WPARAM wParam, LPARAM lParam, bool* handled) {
  if (!touch_target_ || GET_POINTERID_WPARAM(wParam) != touch_contact_) return 0;
  *handled = true;
  TouchUp(ClientPoint(handle_, lParam));
  return 0;
}

}  // namespace lumo
