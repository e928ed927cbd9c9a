// The delivery of records to a control, and its default reaction.
#include "lumo/controls/control_base.h"

#include "lumo/core/handler.h"
#include "lumo/core/window.h"

namespace lumo {

bool ControlBase::RunOwnHandlers(_Msg& msg, const WeakRef<ControlBase>& self, int* result) {
  if (msg.control != this) return true;
  if (window_ && window_->Handler()) {
    window_->Handler()->OnNotify(msg);
    if (!self || msg.stop) return false;
  }
  if (!codeBindings_.IsEmpty() && !codeBindings_.Run(msg, self, result)) return false;
  return !*result || layoutBindings_.IsEmpty() || layoutBindings_.Run(msg, self, result);
}

int ControlBase::HandleEvent(_Msg& msg) {
  int result = 1;
  if (!IsInternalEvent(msg.type) && msg.control == this) {
    const WeakRef<ControlBase> self(this);
    if (!RunOwnHandlers(msg, self, &result)) return result;
  }
  if (result) DoEvent(msg);
  return result;
}

int ControlBase::AttachXmlEvent(StringView kind, StringView type, StringView receiver, StringView list) {
  if (kind == TEXT("Event")) layoutBindings_.Add(EventTypeFromName(type), MakeLayoutBinding(this, receiver, list));
  return 0;
}

void ControlBase::PassToParent(_Msg& msg) {
  if (parent_) parent_->HandleEvent(msg);
}

void ControlBase::DoEvent(_Msg& msg) {
  const bool passed_by = !IsMouseEnabled() && IsPointerEvent(msg.type);
  if (!passed_by) {
    // Consuming may destroy this control; it says so by consuming.
    if (ConsumeEvent(msg)) return;
  }
  PassToParent(msg);
}

bool ControlBase::ConsumeEvent(_Msg& msg) {
  switch (msg.type) {
    case EventSetCursor:
      ShowCursor();
      return true;
    case InternalSetFocus:
    case InternalKillFocus:
      TakeFocusEvent(msg.type);
      return true;
    case InternalContextMenu:
      if (!IsEnabled()) return false;
      SendMenu(msg);
      return true;
    case EventMouseEnter:
    case EventMouseLeave:
      return ConsumeEnter(msg);
    case EventButtonDown:
    case InternalDoubleClick:
      return OnButtonDown(msg);
    case EventButtonUp:
      return OnButtonUp(msg);
    case EventTouchDown:
      return receivePointer_ && OnButtonDown(msg);
    case EventTouchUp:
      return receivePointer_ && OnButtonUp(msg);
    default:
      return false;
  }
}

// A container is hot for as long as the pointer is over anything inside it.
bool ControlBase::ConsumeEnter(_Msg& msg) {
  const bool foreign = msg.control != this;
  const bool around_hot = window_ && window_->Hot() && IsSelfOrAncestorOf(window_->Hot());
  if (msg.type == EventMouseEnter) {
    if (!foreign || around_hot) OnMouseEnter(msg);
    return false;
  }
  if (foreign && around_hot) return true;
  OnMouseLeave(msg);
  return false;
}

void ControlBase::TakeFocusEvent(int type) {
  if (!IsEnabled()) return;
  focused_ = type == InternalSetFocus;
  state_ = focused_ ? StateHot : StateNormal;
  Invalidate();
}

void ControlBase::ShowCursor() const {
  const WCHAR* shape = IDC_ARROW;
  if (cursor_ == CursorHand && IsEnabled()) shape = IDC_HAND;
  if (cursor_ == CursorIBeam) shape = IDC_IBEAM;
  ::SetCursor(LoadCursorW(nullptr, shape));
}

// The window's record carries the last pointer position, which is where the menu was asked for.
void ControlBase::SendMenu(const _Msg& msg) {
  if (window_) window_->SendNotify(this, EventMenu, msg.wParam, msg.lParam);
}

void ControlBase::OnMouseEnter(_Msg&) {
  if (!IsEnabled() || state_ != StateNormal) return;
  state_ = StateHot;
  if (HasStateVisuals()) Invalidate();
}

void ControlBase::OnMouseLeave(_Msg&) {
  if (!IsEnabled() || state_ != StateHot) return;
  state_ = StateNormal;
  if (HasStateVisuals()) Invalidate();
}

bool ControlBase::OnButtonDown(_Msg&) {
  if (!IsEnabled()) return false;
  state_ = StatePushed;
  SetCaptured(true);
  Invalidate();
  return true;
}

bool ControlBase::OnButtonUp(_Msg& msg) {
  if (!IsCaptured()) return false;
  SetCaptured(false);
  Invalidate();
  if (!HitTest(msg.point)) {
    state_ = StateNormal;
    return false;
  }
  state_ = msg.type == EventTouchUp ? StateNormal : StateHot;
  Activate();
  return true;
}

}  // namespace lumo
