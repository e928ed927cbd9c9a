// The tree of a Window, its names, and who of it is being talked to.
#include "lumo/core/window.h"

#include "lumo/controls/box_base.h"
#include "lumo/controls/control_interfaces.h"
#include "lumo/core/handler.h"
#include "lumo/core/resource_source.h"
#include "lumo/core/shadow_window.h"
#include "lumo/core/tooltip.h"
#include "lumo/core/value_readers.h"
#include "lumo/core/window_messages.h"
#include "lumo/render/render.h"

namespace lumo {
namespace {

void EnterName(ControlBase* control, void* names) {
  if (!control->Name().empty()) {
    (*static_cast<std::map<String, ControlBase*, std::less<>>*>(names))[control->Name()] = control;
  }
}

// Every control of a subtree, parents first. Trees are no deeper than the builder allows.
void ForEach(ControlBase* control, void (*visit)(ControlBase*, void*), void* data) {
  visit(control, data);
  const BoxBase* const box = control->AsBox();
  if (!box) return;
  for (ControlBase* const child : box->Children()) ForEach(child, visit, data);
}

bool IsKeyboardEvent(int type) { return type >= EventKeyDown && type <= EventSysKey; }

}  // namespace

Window::Window() : scale_(GlobalScalePercent() > 0 ? GlobalScalePercent() : 100) {}

Window::~Window() {
  if (handle_) SetWindowLongPtrW(handle_, GWLP_USERDATA, 0);
  if (Window* const shadow = shadow_alive_.Get(); shadow && shadow->Handle()) DestroyWindow(shadow->Handle());
  std::vector<ControlBase*> doomed = std::move(detached_);
  if (root_) doomed.push_back(std::exchange(root_, nullptr));
  for (ControlBase* const control : doomed) delete control;
}

void Window::SetHandler(lumowin* handler) { handler_ = WeakRef<lumowin>(handler); }
lumowin* Window::Handler() const { return handler_.Get(); }

void Window::SetResourceFolder(StringView folder) {
  folder_ = folder;
  if (!folder_.empty() && folder_.back() != '\\' && folder_.back() != '/') folder_ += '\\';
}

void Window::SetResource(StringView folder, StringView layout_file) {
  SetResourceFolder(folder);
  layout_file_ = layout_file;
}

void Window::SetAttribute(const WCHAR* name, const WCHAR* value) {
  if (!SetWindowAttribute(attributes_, TextOf(name), TextOf(value))) return;
  if (TextOf(name) == TEXT("textid") && handle_) {
    SetWindowTextW(handle_, Resources().GetString(attributes_.textid).c_str());
  }
}

IRender* Window::Render() {
  if (!render_) render_ = MakeRender();
  return render_.get();
}

void Window::AttachRoot(ControlBase* root) {
  const WeakRef<Window> alive(this);
  const WeakRef<ControlBase> attached(root);
  SetFocus(nullptr);
  if (!alive) return;
  hot_ = captured_ = key_target_ = touch_target_ = nullptr;
  button_held_ = false;
  if (root_ && root_ != root) {
    ControlBase* const previous = std::exchange(root_, nullptr);
    names_.clear();
    previous->SetWindow(nullptr, nullptr, false);
    DeleteLater(previous);
  }
  root_ = root;
  if (!root) return;
  root->SetWindow(this, nullptr, true);
  root->Init();
  if (!alive || !attached) return;
  EnterNames(root);
  layout_due_ = true;
  first_paint_ = true;
}

// Measurements and pictures belong to the scale that they were made at.
void Window::RescaleTree() {
  if (!root_) return;
  ForEach(
      root_, [](ControlBase* control, void*) { control->SetNeedsMeasure(true); }, nullptr);
  root_->ReleaseImages();
  root_->InvalidateLayout();
}

void Window::EnterNames(ControlBase* subtree) { ForEach(subtree, &EnterName, &names_); }

ControlBase* Window::FindControl(StringView name) const {
  const auto found = names_.find(name);
  return found == names_.end() ? nullptr : found->second;
}

void Window::Forget(ControlBase* control) {
  if (focused_ == control) focused_ = nullptr;
  if (hot_ == control) hot_ = nullptr;
  if (captured_ == control) captured_ = nullptr;
  if (key_target_ == control) key_target_ = nullptr;
  if (touch_target_ == control) touch_target_ = nullptr;
  if (root_ == control) root_ = nullptr;
  if (inner_shadow_ == control) inner_shadow_ = nullptr;
  if (tooltip_) tooltip_->Forget(control);
  groups_.LeaveAll(control);
  std::erase(detached_, control);
  if (const auto named = names_.find(control->Name()); named != names_.end() && named->second == control) {
    names_.erase(named);
  }
}

void Window::DeleteLater(ControlBase* control) {
  if (detached_.empty() && handle_) PostMessageW(handle_, kMessageDeleteDetached, 0, 0);
  detached_.push_back(control);
}

void Window::SendNotify(ControlBase* control, int type, WPARAM wParam, LPARAM lParam) {
  Deliver(control, type, wParam, lParam, pointer_);
}

void Window::Deliver(ControlBase* control, int type, WPARAM wParam, LPARAM lParam, POINT point) {
  if (!control) return;
  // The name is borrowed by the record; the control may rename or destroy itself meanwhile.
  const String name = control->Name();
  _Msg record;
  record.type = type;
  record.sender = control->Interface();
  record.timestamp = GetTickCount();
  record.point = point;
  record.key = IsKeyboardEvent(type) ? static_cast<int>(wParam) : 0;
  record.wParam = wParam;
  record.lParam = lParam;
  record.window = handle_;
  record.senderName = name.c_str();
  record.control = control;
  control->HandleEvent(record);
}

ControlBase* Window::ControlAt(POINT point) const {
  if (!root_) return nullptr;
  ControlBase* const found = root_->FindControl([](ControlBase* control, void*) { return control; }, &point,
                                                FindVisible | FindHitTest | FindTopFirst);
  return found && found->GetWindow() == this ? found : nullptr;
}

}  // namespace lumo
