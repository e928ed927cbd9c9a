// The text controls and their container variants: which layers each is made of.
#pragma once

#include "lumo/controls/box_t.h"
#include "lumo/controls/option_template.h"

namespace lumo {

class Control final : public ControlT<Control, IControl, ControlBase> {
 public:
  static constexpr ControlClass kClass = ControlClass::Control;
};

class Label final : public LabelTemplateTemplate<ControlT<Label, ILabel, ControlBase>> {
 public:
  static constexpr ControlClass kClass = ControlClass::Label;
};

class Button final : public ButtonTemplateTemplate<ControlT<Button, IButton, ControlBase>> {
 public:
  static constexpr ControlClass kClass = ControlClass::Button;
};

class CheckBox final : public CheckBoxTemplateTemplate<ControlT<CheckBox, ICheckBox, ControlBase>> {
 public:
  static constexpr ControlClass kClass = ControlClass::CheckBox;
  ICheckBox* AsCheckBox() override { return this; }
};

class Option final : public OptionTemplateTemplate<ControlT<Option, IOption, ControlBase>> {
 public:
  static constexpr ControlClass kClass = ControlClass::Option;
};

class LabelBox final : public LabelTemplateTemplate<BoxT<LabelBox, ILabelBox, BoxBase>> {
 public:
  static constexpr ControlClass kClass = ControlClass::LabelBox;
};

class ButtonBox final : public ButtonTemplateTemplate<BoxT<ButtonBox, IButtonBox, BoxBase>> {
 public:
  static constexpr ControlClass kClass = ControlClass::ButtonBox;
};

class CheckBoxBox final : public CheckBoxTemplateTemplate<BoxT<CheckBoxBox, ICheckBoxBox, BoxBase>> {
 public:
  static constexpr ControlClass kClass = ControlClass::CheckBoxBox;
  ICheckBox* AsCheckBox() override { return this; }
};

class OptionBox final : public OptionTemplateTemplate<BoxT<OptionBox, IOptionBox, BoxBase>> {
 public:
  static constexpr ControlClass kClass = ControlClass::OptionBox;
};

}  // namespace lumo
