// The pointer: what is under it, what holds it, and what it does to controls.
#include "lumo/controls/control_base.h"
#include "lumo/core/tooltip.h"
#include "lumo/core/window.h"

#include <windowsx.h>

namespace lumo {
namespace {

POINT PointOf(LPARAM lParam) { return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}; }

}  // namespace

// Leaving and hovering are reported once an order.
void Window::TrackLeaveAndHover() {
  TRACKMOUSEEVENT order = {};
  order.cbSize = sizeof order;
  order.dwFlags = TME_LEAVE | TME_HOVER;
  order.hwndTrack = handle_;
  if (!tooltip_) tooltip_ = std::make_unique<Tooltip>(handle_);
  order.dwHoverTime = tooltip_->InitialDelay();
  tracking_ = TrackMouseEvent(&order) != FALSE;
}

void Window::SetHot(ControlBase* control, POINT point) {
  if (control == hot_) return;
  const WeakRef<Window> alive(this);
  const WeakRef<ControlBase> entered(control);
  ControlBase* const left = std::exchange(hot_, control);
  if (tooltip_) tooltip_->Hide();
  Deliver(left, EventMouseLeave, 0, 0, point);
  if (!alive || !entered || hot_ != control) return;
  Deliver(control, EventMouseEnter, 0, 0, point);
  // A tip over the next control wants a hover of its own.
  if (alive) tracking_ = false;
}

LRESULT Window::OnMouseMove(WPARAM wParam, LPARAM lParam, bool* handled) {
  *handled = true;
  if (IsTouchActive()) return 0;
  const POINT point = PointOf(lParam);
  pointer_ = point;
  const WeakRef<Window> alive(this);
  SetHot(ControlAt(point), point);
  if (!alive) return 0;
  if (!tracking_) TrackLeaveAndHover();
  Deliver(captured_ ? captured_ : hot_, EventMouseMove, wParam, lParam, point);
  return 0;
}

LRESULT Window::OnMouseLeave(WPARAM, LPARAM, bool* handled) {
  *handled = true;
  tracking_ = false;
  if (tooltip_) tooltip_->Hide();
  if (!IsTouchActive()) SetHot(nullptr, pointer_);
  return 0;
}

LRESULT Window::OnMouseHover(WPARAM wParam, LPARAM lParam, bool* handled) {
  *handled = true;
  if (IsTouchActive()) return 0;
  const POINT point = PointOf(lParam);
  ControlBase* const control = ControlAt(point);
  if (!control) return 0;
  const WeakRef<Window> alive(this);
  const WeakRef<ControlBase> hovered(control);
  Deliver(control, EventMouseHover, wParam, lParam, point);
  if (alive && hovered && tooltip_ && !button_held_) tooltip_->Show(*control, point, scale_);
  return 0;
}

void Window::Press(int type, POINT point, WPARAM wParam, LPARAM lParam) {
  const WeakRef<Window> alive(this);
  ::SetFocus(handle_);
  if (!alive || !handle_) return;
  if (tooltip_) tooltip_->Hide();
  pointer_ = point;
  ControlBase* const control = ControlAt(point);
  if (!control) return;
  captured_ = control;
  SetCapture(handle_);
  button_held_ = true;
  Deliver(control, type, wParam, lParam, point);
}

void Window::ReleasePress(int type, WPARAM wParam, LPARAM lParam) {
  ControlBase* const control = std::exchange(captured_, nullptr);
  button_held_ = false;
  ReleaseCapture();
  const POINT point = PointOf(lParam);
  pointer_ = point;
  Deliver(control, type, wParam, lParam, point);
}

LRESULT Window::OnLeftDown(WPARAM wParam, LPARAM lParam, bool* handled) {
  *handled = true;
  if (!IsTouchActive()) Press(EventButtonDown, PointOf(lParam), wParam, lParam);
  return 0;
}

LRESULT Window::OnLeftDoubleClick(WPARAM wParam, LPARAM lParam, bool* handled) {
  *handled = true;
  if (!IsTouchActive()) Press(InternalDoubleClick, PointOf(lParam), wParam, lParam);
  return 0;
}

LRESULT Window::OnLeftUp(WPARAM wParam, LPARAM lParam, bool* handled) {
  *handled = true;
  if (!IsTouchActive()) ReleasePress(EventButtonUp, wParam, lParam);
  return 0;
}

LRESULT Window::OnRightDown(WPARAM wParam, LPARAM lParam, bool* handled) {
  *handled = true;
  if (!IsTouchActive()) Press(EventRButtonDown, PointOf(lParam), wParam, lParam);
  return 0;
}

// Not handled: default processing makes WM_CONTEXTMENU of it.
LRESULT Window::OnRightUp(WPARAM wParam, LPARAM lParam, bool*) {
  if (!IsTouchActive()) ReleasePress(EventRButtonUp, wParam, lParam);
  return 0;
}

LRESULT Window::OnMouseWheel(WPARAM wParam, LPARAM lParam, bool* handled) {
  *handled = true;
  if (IsTouchActive()) return 0;
  POINT point = PointOf(lParam);
  ScreenToClient(handle_, &point);
  pointer_ = point;
  Deliver(ControlAt(point), EventScrollWheel, wParam, lParam, point);
  return 0;
}

LRESULT Window::OnContextMenu(WPARAM wParam, LPARAM lParam, bool* handled) {
  *handled = true;
  POINT point = PointOf(lParam);
  ScreenToClient(handle_, &point);
  pointer_ = point;
  // The press that asked for the menu has been released already: the control is then the one under the pointer.
  ControlBase* const control = captured_ ? std::exchange(captured_, nullptr) : ControlAt(point);
  if (GetCapture() == handle_) ReleaseCapture();
  button_held_ = false;
  Deliver(control, InternalContextMenu, wParam, lParam, point);
  return 0;
}

LRESULT Window::OnSetCursor(WPARAM wParam, LPARAM lParam, bool* handled) {
  if (LOWORD(lParam) != HTCLIENT) return 0;
  POINT point = {};
  GetCursorPos(&point);
  ScreenToClient(handle_, &point);
  ControlBase* const control = captured_ ? captured_ : ControlAt(point);
  if (!control) return 0;
  *handled = true;
  Deliver(control, EventSetCursor, wParam, lParam, point);
  return TRUE;
}

void Window::ReleaseCaptureOf(ControlBase* control) {
  if (!control || captured_ != control) return;
  captured_ = nullptr;
  button_held_ = false;
  if (GetCapture() == handle_) ReleaseCapture();
}

// The button came up elsewhere, or never will.
void Window::EndPress() {
  if (!captured_ || !button_held_) return;
  ControlBase* const control = std::exchange(captured_, nullptr);
  button_held_ = false;
  if (GetCapture() == handle_) ReleaseCapture();
  Deliver(control, EventButtonUp, 0, 0, pointer_);
}

LRESULT Window::OnCaptureChanged(WPARAM, LPARAM lParam, bool*) {
  // Another window took it while a button is held: the release will be that window's, and is no click here.
  if (captured_ && reinterpret_cast<HWND>(lParam) != handle_) {
    pointer_ = {-1, -1};
    EndPress();
  }
  return 0;
}

LRESULT Window::OnKillFocus(WPARAM, LPARAM, bool*) {
  EndPress();
  return 0;
}

}  // namespace lumo
