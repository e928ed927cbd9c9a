// ButtonTemplate: a label that is pressed, by pointer or keyboard.
#pragma once

#include "lumo/controls/label_template.h"

namespace lumo {

// What of a button's reaction is its own. Passed: the parent has got the record; Consumed: done, and the control may be
// gone; Inherited: the base's reaction follows.
enum class ButtonReaction { Passed, Consumed, Inherited };
ButtonReaction ReactAsButton(ControlBase& button, _Msg& msg);
// Sends the click event of an active button. False when it was not active or is gone now.
bool SendClick(ControlBase& button);

template <class X>
class ButtonTemplate : public LabelTemplateTemplate<X> {
 public:
  LUMO_LAYER ButtonTemplate() = default;
  LUMO_LAYER ~ButtonTemplate() override = default;

  IButton* AsButton() override { return this; }
  bool IsFocusable() const override { return this->IsKeyboardEnabled() && this->IsEnabled(); }
  void Activate() override { SendClick(*this); }
  void DoEvent(_Msg& msg) override {
    if (ReactAsButton(*this, msg) == ButtonReaction::Inherited) LabelTemplateTemplate<X>::DoEvent(msg);
  }
};

template <class X>
class ButtonTemplateTemplate : public ButtonTemplate<X> {
 public:
  LUMO_LAYER ButtonTemplateTemplate() = default;
  LUMO_LAYER ~ButtonTemplateTemplate() override = default;
};

}  // namespace lumo
