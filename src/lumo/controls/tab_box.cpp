#include "lumo/controls/tab_box.h"

#include "lumo/controls/attribute_table.h"
#include "lumo/core/window.h"

namespace lumo {

void TabBox::ShowPage(ControlBase& page, bool shown) {
  const WeakRef<ControlBase> there(&page);
  page.SetMouseEnabled(shown);
  if (BoxBase* const box = page.AsBox()) box->SetMouseChildEnabled(shown);
  page.SetFadeVisible(shown);
}

bool TabBox::AddAt(ControlBase* child, int index) {
  const bool visible = child && child->IsVisible();
  if (!BoxBase::AddAt(child, index)) return false;
  if (current_ < 0 && visible) {
    current_ = index;
    return true;
  }
  if (index <= current_) ++current_;
  ShowPage(*child, false);
  return true;
}

bool TabBox::SetItemIndex(ControlBase* child, int index) {
  const ControlBase* const page = GetItemAt(current_);
  if (!BoxBase::SetItemIndex(child, index)) return false;
  current_ = GetItemIndex(page);
  return true;
}

void TabBox::OnChildGone(int index) {
  if (index < current_) {
    --current_;
  } else if (index == current_) {
    ControlBase* const first = GetItemAt(0);
    current_ = first ? 0 : -1;
    const WeakRef<ControlBase> self(this);
    if (first) ShowPage(*first, true);
    if (self) ArrangeAncestor();
  }
}

void TabBox::RemoveAll() {
  current_ = -1;
  const WeakRef<ControlBase> self(this);
  BoxBase::RemoveAll();
  if (self) ArrangeAncestor();
}

// A root has no parent, which is what initialisation waits for elsewhere.
void TabBox::SetWindow(Window* window, ControlBase* parent, bool init) {
  const WeakRef<ControlBase> self(this);
  BoxBase::SetWindow(window, parent, init);
  if (self && init && !parent) Init();
}

void TabBox::DoInit() {
  if (initialised_) return;
  initialised_ = true;
  Select(pending_);
}

void TabBox::SetSelectedId(int index) {
  if (initialised_) {
    Select(index);
  } else {
    pending_ = index;
  }
}

bool TabBox::Select(int index) {
  if (index < 0 || index >= GetCount()) return false;
  if (index == current_) return true;
  const int previous = current_;
  current_ = index;
  const WeakRef<ControlBase> self(this), selected(GetItemAt(index));
  ForEachChild([&selected](ControlBase& page) { ShowPage(page, &page == selected.Get()); });
  if (!self) return true;
  if (Window* const window = GetWindow()) {
    window->MoveFocus(false);
    if (self) window->SendNotify(this, EventSelect, static_cast<WPARAM>(index), previous);
  }
  return true;
}

bool TabBox::SelectPage(const ControlBase* page) { return Select(GetItemIndex(page)); }

namespace {
ControlBase* IfNamed(ControlBase* control, void* name) {
  return control->Name() == *static_cast<const StringView*>(name) ? control : nullptr;
}
}  // namespace

bool TabBox::SelectPage(StringView name) { return Select(GetItemIndex(FindControl(IfNamed, &name, 0))); }

namespace {
constexpr AttributeRow<TabBox> kAttributes[] = {
    {TEXT("selectedid"), kValueAs<TabBox, ValueKind::Integer, &TabBox::SetSelectedId>},
};
}  // namespace

bool TabBox::SetAttribute(const WCHAR* name, const WCHAR* value) {
  return ApplyAttribute(kAttributes, *this, TextOf(name), TextOf(value)) || BoxBase::SetAttribute(name, value);
}

void TabBox::ListAttributes(AttributeInfos* infos) { ListRows(kAttributes, infos); }

}  // namespace lumo
