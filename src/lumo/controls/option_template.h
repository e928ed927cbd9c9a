// OptionTemplate: a check box of which only one in a named group is selected. The groups are the window's.
#pragma once

#include "lumo/controls/check_box_template.h"

namespace lumo {

// Unselects the other options of the group. False when `option` is gone now.
bool UnselectOthers(ControlBase& option, StringView group, bool notify);
// Leaves `from` and joins `to` in the option's window; empty names are no groups.
void ChangeGroup(ControlBase& option, StringView from, StringView to);

inline constexpr AttributeInfo kGroupAttribute = {TEXT("group"), ValueKind::Group};

// What the layer holds (layer.h).
struct OptionData {
  String group_;
};

template <class X>
class OptionTemplate : protected OptionData, public CheckBoxTemplateTemplate<X> {
  using Base = CheckBoxTemplateTemplate<X>;

 public:
  LUMO_LAYER OptionTemplate() = default;
  LUMO_LAYER ~OptionTemplate() override = default;

  IOption* AsOption() override { return this; }
  const String& GetGroup() const override { return group_; }
  void SetGroup(StringView name) override {
    if (name == group_) return;
    ChangeGroup(*this, group_, name);
    group_ = name;
    SetSelected(this->IsSelected(), true);
  }

  void SetSelected(bool selected, bool notify) override {
    this->selection_.Set(selected);
    if (selected) {
      if (!UnselectOthers(*this, group_, notify)) return;
      if (notify && !SendFrom(*this, EventSelect)) return;
    } else if (!SendFrom(*this, EventUnselect)) {
      return;
    }
    this->Invalidate();
  }
  void Activate() override {
    if (SendClick(*this) && this->IsActive()) SetSelected(true, true);
  }
  void SetWindow(Window* window, ControlBase* parent, bool init) override {
    const WeakRef<ControlBase> self(this);
    Base::SetWindow(window, parent, init);
    if (self && init) ChangeGroup(*this, StringView(), group_);
  }
  bool SetAttribute(const WCHAR* name, const WCHAR* value) override {
    if (!IsNamed(kGroupAttribute, name)) return Base::SetAttribute(name, value);
    SetGroup(TextOf(value));
    return true;
  }
};

template <class X>
class OptionTemplateTemplate : public OptionTemplate<X> {
 public:
  LUMO_LAYER OptionTemplateTemplate() = default;
  LUMO_LAYER ~OptionTemplateTemplate() override = default;
};

}  // namespace lumo
