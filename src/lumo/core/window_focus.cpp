// The keyboard: which control it belongs to, and how Tab moves on.
#include "lumo/controls/box_base.h"
#include "lumo/core/window.h"

#include <algorithm>

namespace lumo {
namespace {

// Labels and pictures may take the focus when code gives it to them; Tab stops where keys do something.
bool IsTabStop(const ControlBase* control) {
  switch (control->Class()) {
    case ControlClass::Button:
    case ControlClass::ButtonBox:
    case ControlClass::CheckBox:
    case ControlClass::CheckBoxBox:
    case ControlClass::Option:
    case ControlClass::OptionBox:
    case ControlClass::Combo:
    case ControlClass::RichEdit:
    case ControlClass::Slider:
    case ControlClass::MenuItem:
    case ControlClass::ListContainerElement:
      return control->IsVisible() && control->IsEnabled() && !control->IsNoFocus() && control->IsFocusable();
    default:
      return false;
  }
}

void CollectTabStops(ControlBase* control, std::vector<ControlBase*>* stops) {
  if (!control->IsVisible()) return;
  if (IsTabStop(control)) stops->push_back(control);
  const BoxBase* const box = control->AsBox();
  if (!box) return;
  for (ControlBase* const child : box->Children()) CollectTabStops(child, stops);
}

}  // namespace

void Window::SetFocus(ControlBase* control) {
  if (control == focused_) return;
  const WeakRef<Window> alive(this);
  const WeakRef<ControlBase> entered(control);
  if (ControlBase* const left = std::exchange(focused_, nullptr)) {
    const WeakRef<ControlBase> leaving(left);
    SendNotify(left, InternalKillFocus, 0, 0);
    if (alive && leaving) SendNotify(left, EventKillFocus, 0, 0);
    if (!alive) return;
  }
  // Whoever was told may have moved the focus on, or ended the control.
  if (!entered || focused_) return;
  focused_ = control;
  SendNotify(control, InternalSetFocus, 0, 0);
  if (alive && entered && focused_ == control) SendNotify(control, EventSetFocus, 0, 0);
}

void Window::MoveFocus(bool backwards) {
  if (!root_) return;
  std::vector<ControlBase*> stops;
  CollectTabStops(root_, &stops);
  if (stops.empty()) return;
  const auto at = std::find(stops.begin(), stops.end(), focused_);
  size_t next = backwards ? stops.size() - 1 : 0;
  if (at != stops.end()) {
    const size_t index = static_cast<size_t>(at - stops.begin());
    next = (index + (backwards ? stops.size() - 1 : 1)) % stops.size();
  }
  stops[next]->SetFocus();
}

bool Window::KeepsTab(ControlBase* control) const {
  return control && control->IsA(ControlClass::RichEdit) && control->IsEnabled() && control->IsVisible();
}

LRESULT Window::OnKeyDown(WPARAM wParam, LPARAM lParam, bool* handled) {
  *handled = true;
  if (wParam == VK_TAB && !KeepsTab(focused_)) {
    MoveFocus(GetKeyState(VK_SHIFT) < 0);
    return 0;
  }
  key_target_ = focused_;
  SendNotify(focused_, EventKeyDown, wParam, lParam);
  return 0;
}

LRESULT Window::OnKeyUp(WPARAM wParam, LPARAM lParam, bool* handled) {
  *handled = true;
  SendNotify(key_target_, EventKeyUp, wParam, lParam);
  return 0;
}

LRESULT Window::OnChar(WPARAM wParam, LPARAM lParam, bool* handled) {
  *handled = true;
  SendNotify(focused_, EventChar, wParam, lParam);
  return 0;
}

// Not handled: Alt+F4 and its kind are the system's.
LRESULT Window::OnSysKeyDown(WPARAM wParam, LPARAM lParam, bool*) {
  SendNotify(focused_, EventSysKey, wParam, lParam);
  return 0;
}

LRESULT Window::OnImeStart(WPARAM wParam, LPARAM lParam, bool*) {
  SendNotify(focused_, EventImeStart, wParam, lParam);
  return 0;
}

LRESULT Window::OnImeEnd(WPARAM wParam, LPARAM lParam, bool*) {
  SendNotify(focused_, EventImeEnd, wParam, lParam);
  return 0;
}

}  // namespace lumo
