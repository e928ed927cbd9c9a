#include "lumo/controls/control_base.h"

#include "base/lock.h"
#include "lumo/controls/box_base.h"
#include "lumo/controls/control_looks.h"
#include "lumo/core/attribute_list.h"
#include "lumo/core/resource_source.h"
#include "lumo/core/window.h"
#include "lumo/render/image_animation.h"

namespace lumo {

ControlBase::ControlBase() = default;

ControlBase::~ControlBase() {
  StopBackgroundAnimation();
  if (window_) window_->Forget(this);
  if (parent_) parent_->AsBox()->DropDestroyed(this);
}

void ControlBase::SetWindow(Window* window, ControlBase* parent, bool init) {
  window_ = window;
  parent_ = parent;
  if (init && parent) Init();
}

void ControlBase::Init() { DoInit(); }

void ControlBase::DoInit() {}

void ControlBase::LeaveWindow() {
  if (window_) window_->Forget(this);
}

bool ControlBase::IsSelfOrAncestorOf(const ControlBase* control) const {
  while (control && control != this) control = control->parent_;
  return control != nullptr;
}

bool ControlBase::IsVisible() const { return IsShown(); }

void ControlBase::SetFadeVisible(bool visible) { SetVisible(visible); }

void ControlBase::SetVisible(bool visible) {
  if (visible == visible_) return;
  const bool was_visible = IsVisible();
  visible_ = visible;
  focused_ = false;
  if (!visible && window_ && window_->Focused() == this) window_->ForgetFocus();
  if (IsVisible() != was_visible) ArrangeAncestor();
  if (!IsVisible()) StopBackgroundAnimation();
}

void ControlBase::SetInternVisible(bool visible) {
  internVisible_ = visible;
  if (visible) return;
  StopBackgroundAnimation();
  // The window tells this control and the handler that the focus is gone.
  if (window_ && window_->Focused() == this) window_->SetFocus(nullptr);
}

bool ControlBase::IsEnabled() const { return enabled_; }

void ControlBase::SetEnabled(bool enabled) {
  const bool changed = enabled != enabled_;
  enabled_ = enabled;
  state_ = enabled ? StateNormal : StateDisabled;
  if (!enabled && captured_) {
    SetCaptured(false);
    if (window_) window_->ReleaseCaptureOf(this);
  }
  if (changed) Invalidate();
}

bool ControlBase::IsMouseEnabled() const { return mouseEnabled_; }
void ControlBase::SetMouseEnabled(bool enabled) { mouseEnabled_ = enabled; }
bool ControlBase::IsKeyboardEnabled() const { return keyboardEnabled_; }
void ControlBase::SetKeyboardEnabled(bool enabled) { keyboardEnabled_ = enabled; }

bool ControlBase::IsFocused() const { return focused_; }

void ControlBase::SetFocus() {
  if (!noFocus_ && window_) window_->SetFocus(this);
}

bool ControlBase::IsFocusable() const { return true; }
bool ControlBase::IsCaptured() const { return captured_; }
void ControlBase::SetCaptured(bool captured) { captured_ = captured; }
bool ControlBase::IsActive() const { return IsVisible() && IsEnabled(); }
void ControlBase::Activate() {}

void ControlBase::SetState(int state) {
  state_ = state;
  Invalidate();
}

bool ControlBase::FindPasses(void* data, unsigned flags) const {
  if ((flags & FindVisible) && !IsVisible()) return false;
  if ((flags & FindEnabled) && !IsEnabled()) return false;
  return !(flags & FindHitTest) || (IsMouseEnabled() && PtInRect(&position_, *static_cast<const POINT*>(data)));
}

ControlBase* ControlBase::FindControl(FindControlProc proc, void* data, unsigned flags) {
  return FindPasses(data, flags) ? proc(this, data) : nullptr;
}

bool ControlBase::HasStateVisuals() const {
  if (!looks_) return false;
  return looks_->stateColors.AnySet() || looks_->stateBorderColors.AnySet() ||
         looks_->stateImages[BackImages].AnySet() || looks_->stateImages[ForeImages].AnySet();
}

void ControlBase::SetSubControlAttributes(StringView name, StringView list) {
  if (!window_) return;
  const WeakRef<ControlBase> control(window_->FindControl(name));
  ApplyAttributeList(list, [&control](const WCHAR* attribute, const WCHAR* value) {
    if (ControlBase* const there = control.Get()) there->SetAttribute(attribute, value);
  });
}

void ControlBase::ReleaseImages() {
  if (!looks_) return;
  for (const StateValues<ImageAttribute>& images : looks_->stateImages) {
    images.ForEach([](ImageAttribute& image) { image.Release(); });
  }
  looks_->bkImage.Release();
}

ControlLooks& ControlBase::EditLooks() {
  if (!looks_) looks_ = std::make_unique<ControlLooks>();
  return *looks_;
}

ImageAttribute* ControlBase::BackgroundImage() const {
  return looks_ && looks_->bkImage.IsSet() ? &looks_->bkImage : nullptr;
}

ImageAttribute* ControlBase::GetSizingImage() {
  if (!looks_) return nullptr;
  if (looks_->bkImage.IsSet()) return &looks_->bkImage;
  const StateValues<ImageAttribute>& images = looks_->stateImages[BackImages];
  return images.Has(StateNormal) ? images.Find(StateNormal) : nullptr;
}

void ControlBase::StopBackgroundAnimation() {
  if (looks_) StopAnimation(looks_->bkImage);
}

String ControlBase::GetToolTip() const {
  if (!looks_) return String();
  if (!looks_->toolTipText.empty() || looks_->toolTipTextId.empty()) return looks_->toolTipText;
  return Resources().GetString(looks_->toolTipTextId);
}

namespace {
constinit vanta::Lazy<const String> no_text;
}

const String& ControlBase::ToolTipText() const { return looks_ ? looks_->toolTipText : no_text.Get(); }

void ControlBase::SetToolTipText(StringView text) {
  EditLooks().toolTipText = vanta::ReplaceAll(String(text), TEXT("<n>"), TEXT("\r\n"));
  Invalidate();
}

void ControlBase::SetToolTipTextId(StringView id) {
  String& stored = EditLooks().toolTipTextId;
  if (stored == id) return;
  stored = id;
  Invalidate();
}

const String& ControlBase::DataId() const { return looks_ ? looks_->dataId : no_text.Get(); }
void ControlBase::SetDataId(StringView text) { EditLooks().dataId = text; }

}  // namespace lumo
