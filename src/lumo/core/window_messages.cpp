// Which message goes where, the library's own messages, and the end of a Window.
#include "lumo/core/window_messages.h"

#include "lumo/controls/control_base.h"
#include "lumo/controls/control_interfaces.h"
#include "lumo/core/handler.h"
#include "lumo/core/system_buttons.h"
#include "lumo/core/tooltip.h"
#include "lumo/core/window.h"

namespace lumo {

const Window::MessageRow Window::kMessages[] = {
    {WM_CREATE, &Window::OnCreate},
    {WM_DESTROY, &Window::OnDestroy},
    {WM_SIZE, &Window::OnSize},
    {WM_KILLFOCUS, &Window::OnKillFocus},
    {WM_PAINT, &Window::OnPaint},
    {WM_CLOSE, &Window::OnClose},
    {WM_ERASEBKGND, &Window::OnEraseBackground},
    {WM_SETCURSOR, &Window::OnSetCursor},
    {WM_GETMINMAXINFO, &Window::OnGetMinMaxInfo},
    {WM_WINDOWPOSCHANGED, &Window::OnPositionChanged},
    {WM_NOTIFY, &Window::OnNotify},
    {WM_CONTEXTMENU, &Window::OnContextMenu},
    {WM_NCCALCSIZE, &Window::OnNcCalcSize},
    {WM_NCHITTEST, &Window::OnNcHitTest},
    {WM_NCPAINT, &Window::OnNcPaint},
    {WM_NCACTIVATE, &Window::OnNcActivate},
    {WM_KEYDOWN, &Window::OnKeyDown},
    {WM_KEYUP, &Window::OnKeyUp},
    {WM_CHAR, &Window::OnChar},
    {WM_SYSKEYDOWN, &Window::OnSysKeyDown},
    {WM_IME_STARTCOMPOSITION, &Window::OnImeStart},
    {WM_IME_ENDCOMPOSITION, &Window::OnImeEnd},
    {WM_COMMAND, &Window::OnCommand},
    {WM_SYSCOMMAND, &Window::OnSysCommand},
    {WM_CTLCOLOREDIT, &Window::OnColorEdit},
    {WM_CTLCOLORSTATIC, &Window::OnColorStatic},
    {WM_MOUSEMOVE, &Window::OnMouseMove},
    {WM_LBUTTONDOWN, &Window::OnLeftDown},
    {WM_LBUTTONUP, &Window::OnLeftUp},
    {WM_LBUTTONDBLCLK, &Window::OnLeftDoubleClick},
    {WM_RBUTTONDOWN, &Window::OnRightDown},
    {WM_RBUTTONUP, &Window::OnRightUp},
    {WM_MOUSEWHEEL, &Window::OnMouseWheel},
    {WM_CAPTURECHANGED, &Window::OnCaptureChanged},
    {WM_ENTERSIZEMOVE, &Window::OnEnterSizeMove},
    {WM_EXITSIZEMOVE, &Window::OnExitSizeMove},
    {WM_TOUCH, &Window::OnTouch},
    {WM_POINTERUPDATE, &Window::OnPointerUpdate},
    {WM_POINTERDOWN, &Window::OnPointerDown},
    {WM_POINTERUP, &Window::OnPointerUp},
    {WM_MOUSEHOVER, &Window::OnMouseHover},
    {WM_MOUSELEAVE, &Window::OnMouseLeave},
    {WM_DPICHANGED, &Window::OnDpiChanged},
    {kMessageSetHandler, &Window::OnSetHandler},
    {kMessageFindControl, &Window::OnFindControl},
    {kMessageControlAtPoint, &Window::OnControlAtPoint},
    {kMessageDeleteDetached, &Window::OnDeleteDetached},
    {kMessageUpdateMaxRestore, &Window::OnUpdateMaxRestore},
    {kMessageSetFilter, &Window::OnSetFilter},
    {kMessageRepaint, &Window::OnRepaint},
    {kMessageReleaseImages, &Window::OnReleaseImages},
};

LRESULT Window::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, bool* handled) {
  for (const MessageRow& row : kMessages) {
    if (row.message == message) return (this->*row.handler)(wParam, lParam, handled);
  }
  return 0;
}

void Window::Close(int code) {
  if (!handle_) return;
  ShowWindow(handle_, SW_HIDE);
  PostMessageW(handle_, WM_CLOSE, static_cast<WPARAM>(code), 0);
}

LRESULT Window::OnClose(WPARAM, LPARAM, bool*) {
  const WeakRef<Window> alive(this);
  if (hot_) SendNotify(hot_, EventMouseLeave, 0, 0);
  if (alive && captured_) SendNotify(captured_, EventButtonUp, 0, 0);
  if (alive && touch_target_) SendNotify(touch_target_, EventButtonUp, 0, 0);
  if (alive && focused_) {
    ControlBase* const control = focused_;
    const WeakRef<ControlBase> leaving(control);
    SendNotify(control, InternalKillFocus, 0, 0);
    if (!alive) return 0;
    focused_ = nullptr;
    if (leaving) SendNotify(control, EventKillFocus, 0, 0);
  }
  if (!alive || !handle_) return 0;
  if (const HWND owner = GetWindow(handle_, GW_OWNER)) ::SetFocus(owner);
  return 0;  // default processing destroys the window
}

LRESULT Window::OnDestroy(WPARAM, LPARAM, bool*) {
  tooltip_.reset();
  return 0;
}

void Window::OnFinalMessage(HWND) {
  RegisterTouch(false);
  handle_ = nullptr;
  delete this;
}

LRESULT Window::OnSetHandler(WPARAM, LPARAM handler, bool* handled) {
  *handled = true;
  SetHandler(reinterpret_cast<lumowin*>(handler));
  return 0;
}

LRESULT Window::OnFindControl(WPARAM, LPARAM name, bool* handled) {
  *handled = true;
  ControlBase* const control = name ? FindControl(reinterpret_cast<const WCHAR*>(name)) : nullptr;
  return control ? reinterpret_cast<LRESULT>(control->Interface()) : 0;
}

LRESULT Window::OnControlAtPoint(WPARAM, LPARAM point, bool* handled) {
  *handled = true;
  ControlBase* const control = point ? ControlAt(*reinterpret_cast<const POINT*>(point)) : nullptr;
  return control ? reinterpret_cast<LRESULT>(control->Interface()) : 0;
}

LRESULT Window::OnDeleteDetached(WPARAM, LPARAM, bool* handled) {
  *handled = true;
  const WeakRef<Window> alive(this);
  // One by one: a destructor may take another of them along.
  while (alive && !detached_.empty()) {
    ControlBase* const control = detached_.back();
    detached_.pop_back();
    delete control;
  }
  return 0;
}

LRESULT Window::OnUpdateMaxRestore(WPARAM, LPARAM, bool* handled) {
  *handled = true;
  if (!FindControl(kMaximiseButton) || !FindControl(kRestoreButton)) return 0;
  if (IsZoomed(handle_)) {
    ShowOneOf(kRestoreButton, kMaximiseButton);
  } else {
    ShowOneOf(kMaximiseButton, kRestoreButton);
  }
  return 0;
}

LRESULT Window::OnSetFilter(WPARAM, LPARAM filter, bool* handled) {
  *handled = true;
  filter_ = reinterpret_cast<IMessageFilter*>(filter);
  return 0;
}

LRESULT Window::OnRepaint(WPARAM, LPARAM, bool* handled) {
  *handled = true;
  if (root_) root_->Invalidate();
  return 0;
}

LRESULT Window::OnReleaseImages(WPARAM, LPARAM, bool* handled) {
  *handled = true;
  if (root_) root_->ReleaseImages();
  return 0;
}

LRESULT Window::Reflect(UINT message, HWND child, WPARAM wParam, LPARAM lParam, bool* handled) {
  if (!child || child == handle_) return 0;
  *handled = true;
  return SendMessageW(child, message + kReflected, wParam, lParam);
}

LRESULT Window::OnNotify(WPARAM wParam, LPARAM lParam, bool* handled) {
  const auto* const notification = reinterpret_cast<const NMHDR*>(lParam);
  return notification ? Reflect(WM_NOTIFY, notification->hwndFrom, wParam, lParam, handled) : 0;
}

LRESULT Window::OnCommand(WPARAM wParam, LPARAM lParam, bool* handled) {
  return Reflect(WM_COMMAND, reinterpret_cast<HWND>(lParam), wParam, lParam, handled);
}

LRESULT Window::OnColorEdit(WPARAM wParam, LPARAM lParam, bool* handled) {
  return Reflect(WM_CTLCOLOREDIT, reinterpret_cast<HWND>(lParam), wParam, lParam, handled);
}

LRESULT Window::OnColorStatic(WPARAM wParam, LPARAM lParam, bool* handled) {
  return Reflect(WM_CTLCOLORSTATIC, reinterpret_cast<HWND>(lParam), wParam, lParam, handled);
}

// The low four bits are the system's own.
LRESULT Window::OnSysCommand(WPARAM wParam, LPARAM, bool* handled) {
  if ((wParam & 0xFFF0) != SC_CLOSE) return 0;
  *handled = true;
  PostMessageW(handle_, WM_CLOSE, 0, 0);
  return 0;
}

}  // namespace lumo
