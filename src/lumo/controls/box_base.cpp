#include "lumo/controls/box_base.h"

#include "lumo/controls/attribute_table.h"
#include "lumo/controls/layout_math.h"
#include "lumo/controls/place_child.h"
#include "lumo/core/window.h"
#include "lumo/render/render.h"

#include <algorithm>

namespace lumo {

BoxBase::BoxBase() { SetLayout(std::make_unique<Layout>()); }

BoxBase::~BoxBase() {
  ControlList children = std::move(children_);
  children_.clear();
  for (ControlBase* const child : children) {
    child->parent_ = nullptr;
    if (autoDestroy_) {
      delete child;
    } else {
      child->LeaveWindow();
      child->SetWindow(nullptr, nullptr, false);
    }
  }
}

void BoxBase::SetLayout(std::unique_ptr<Layout> layout) {
  layout_ = std::move(layout);
  layout_->SetOwner(this);
}

int BoxBase::GetItemIndex(const ControlBase* child) const {
  const auto found = std::find(children_.begin(), children_.end(), child);
  return found == children_.end() ? -1 : static_cast<int>(found - children_.begin());
}

ControlBase* BoxBase::GetItemAt(int index) const {
  return index >= 0 && index < GetCount() ? children_[static_cast<size_t>(index)] : nullptr;
}

int BoxBase::FindSelectable(int index, bool forward) const {
  const int count = GetCount();
  if (count == 0) return -1;
  const int step = forward ? 1 : -1;
  for (int i = std::clamp(index, 0, count - 1); i >= 0 && i < count; i += step) {
    ControlBase* const child = GetItemAt(i);
    if (child->IsA(ControlClass::ListContainerElement) && child->IsVisible() && child->IsEnabled()) return i;
  }
  return forward ? -1 : FindSelectable(0, true);
}

bool BoxBase::Add(ControlBase* child) { return AddAt(child, GetCount()); }

bool BoxBase::AddAt(ControlBase* child, int index) {
  if (!child || child->parent_ || child->IsSelfOrAncestorOf(this) || index < 0 || index > GetCount()) return false;
  if (!TakeIntoWindow(child)) return false;
  child->parent_ = this;
  if (IsVisible()) {
    Arrange();
  } else {
    child->SetInternVisible(false);
  }
  children_.insert(children_.begin() + std::min(index, GetCount()), child);
  ++listVersion_;
  if (child->needsArrange_ || child->arrangeBelow_) NoteArrangeBelow();
  return true;
}

// False when what the child did on its initialisation destroyed one of the two.
bool BoxBase::TakeIntoWindow(ControlBase* child) {
  Window* const window = GetWindow();
  if (!window) return true;
  const WeakRef<ControlBase> self(this), added(child);
  child->SetWindow(window, this, true);
  if (!self && added) child->parent_ = nullptr;
  if (!self || !added) return false;
  window->EnterNames(child);
  return true;
}

bool BoxBase::SetItemIndex(ControlBase* child, int index) {
  const int from = GetItemIndex(child);
  if (from < 0 || index < 0 || index >= GetCount()) return false;
  Arrange();
  children_.erase(children_.begin() + from);
  children_.insert(children_.begin() + index, child);
  ++listVersion_;
  return true;
}

bool BoxBase::Remove(ControlBase* child) { return RemoveAt(GetItemIndex(child)); }

bool BoxBase::RemoveAt(int index) {
  ControlBase* const child = GetItemAt(index);
  if (!child) return false;
  Arrange();
  children_.erase(children_.begin() + index);
  ++listVersion_;
  const WeakRef<ControlBase> self(this);
  LetGo(child);
  if (self) OnChildGone(index);
  return true;
}

void BoxBase::RemoveAll() {
  const ControlList children = std::move(children_);
  children_.clear();
  ++listVersion_;
  const WeakRef<ControlBase> self(this);
  for (ControlBase* const child : children) child->parent_ = nullptr;
  for (ControlBase* const child : children) LetGo(child);
  if (self) Arrange();
}

// The child is out of the list. Whoever asks the window from now on does not find it.
void BoxBase::LetGo(ControlBase* child) {
  Window* const window = GetWindow();
  const bool destroy = autoDestroy_;
  const bool later = delayedDestroy_ && window;
  child->parent_ = nullptr;
  child->LeaveWindow();
  if (!destroy) {
    child->SetWindow(nullptr, nullptr, false);
  } else if (later) {
    window->DeleteLater(child);
  } else {
    delete child;
  }
}

void BoxBase::DropDestroyed(ControlBase* child) {
  const int index = GetItemIndex(child);
  if (index < 0) return;
  children_.erase(children_.begin() + index);
  ++listVersion_;
  Arrange();
  OnChildGone(index);
}

void BoxBase::SetScrollOffset(POINT offset) {
  if (offset.x == scroll_.x && offset.y == scroll_.y) return;
  scroll_ = offset;
  Invalidate();
}

void BoxBase::SetWindow(Window* window, ControlBase* parent, bool init) {
  const WeakRef<ControlBase> self(this);
  ForEachChild([&](ControlBase& child) {
    if (self) child.SetWindow(window, this, init);
  });
  if (self) ControlBase::SetWindow(window, parent, init);
}

void BoxBase::LeaveWindow() {
  for (ControlBase* const child : children_) child->LeaveWindow();
  ControlBase::LeaveWindow();
}

void BoxBase::ForEachChild(const std::function<void(ControlBase&)>& act) {
  std::vector<WeakRef<ControlBase>> children;
  children.reserve(children_.size());
  for (ControlBase* const child : children_) children.emplace_back(child);
  for (const WeakRef<ControlBase>& child : children) {
    if (ControlBase* const there = child.Get()) act(*there);
  }
}

void BoxBase::SetEnabled(bool enabled) {
  ControlBase::SetEnabled(enabled);
  ForEachChild([enabled](ControlBase& child) { child.SetEnabled(enabled); });
}

void BoxBase::SetVisible(bool visible) {
  const WeakRef<ControlBase> self(this);
  ControlBase::SetVisible(visible);
  if (self) ImposeVisibility();
}

void BoxBase::SetInternVisible(bool visible) {
  const WeakRef<ControlBase> self(this);
  ControlBase::SetInternVisible(visible);
  if (self) ImposeVisibility();
}

void BoxBase::ImposeVisibility() {
  const bool visible = IsVisible();
  ForEachChild([visible](ControlBase& child) { child.SetInternVisible(visible); });
}

void BoxBase::SetPos(RECT rect) {
  if (!MoveTo(rect) || children_.empty()) return;
  layout_->ArrangeChild(children_, Shrink(Position(), layout_->ScaledPadding()));
}

SIZE BoxBase::EstimateSize(SIZE available) {
  const LONG width = ScaledWidth(), height = ScaledHeight();
  if (width != SizeAuto && height != SizeAuto) return {width, height};
  if (!NeedsMeasure()) return Estimated();
  const RECT padding = layout_->ScaledPadding();
  const SIZE inner = {ToLong(LONGLONG{available.cx} - padding.left - padding.right),
                      ToLong(LONGLONG{available.cy} - padding.top - padding.bottom)};
  const SIZE content = layout_->EstimateLayout(children_, inner);
  SetEstimated({width == SizeAuto ? content.cx : width, height == SizeAuto ? content.cy : height});
  SetNeedsMeasure(std::any_of(children_.begin(), children_.end(), [](const ControlBase* child) {
    return child->NeedsMeasure() && child->DependsOnContent() && child->IsVisible();
  }));
  return Estimated();
}

namespace {
constexpr AttributeRow<BoxBase> kAttributes[] = {
    {TEXT("mousechild"), kValueAs<BoxBase, ValueKind::Boolean, &BoxBase::SetMouseChildEnabled>},
};
}  // namespace

bool BoxBase::SetAttribute(const WCHAR* name, const WCHAR* value) {
  return layout_->SetAttribute(TextOf(name), value) ||
         ApplyAttribute(kAttributes, *this, TextOf(name), TextOf(value)) || ControlBase::SetAttribute(name, value);
}

void BoxBase::ListAttributes(AttributeInfos* infos) { ListRows(kAttributes, infos); }

void BoxBase::PaintChildren(IRender* render, const RECT& dirty) {
  RECT met;
  if (!IntersectRect(&met, &dirty, &Position())) return;
  const POINT origin = render->GetOrigin();
  if (IsScrolled()) render->OffsetOrigin(scroll_.x, scroll_.y);
  const RECT shown = Shift(dirty, scroll_.x, scroll_.y);
  for (size_t i = 0; i < children_.size(); ++i) {
    if (children_[i]->IsVisible()) children_[i]->Paint(render, shown);
  }
  if (IsScrolled()) render->SetOrigin(origin.x, origin.y);
}

void BoxBase::ReleaseImages() {
  ControlBase::ReleaseImages();
  for (ControlBase* const child : children_) child->ReleaseImages();
}

}  // namespace lumo
