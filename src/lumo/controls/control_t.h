// ControlT: a control's public face in front of its ControlBase part, made from the class itself, the face and the
// base.
#pragma once

#include "lumo/controls/control_base.h"
#include "lumo/controls/control_interfaces.h"
#include "lumo/controls/layer.h"

namespace lumo {

// What does not depend on T: one table of virtual functions for all classes with this face and base.
template <class I, class Base>
class FacedControl : public I, public Base {
 public:
  LUMO_LAYER FacedControl() = default;
  LUMO_LAYER ~FacedControl() override = default;

  IControl* Interface() override { return this; }
  ControlBase* AsControl() override { return this; }

  // The face offers the same operations; code that holds the class itself means the control's.
  using Base::Activate;
  using Base::GetToolTip;
  using Base::Invalidate;
  using Base::IsEnabled;
  using Base::IsFocused;
  using Base::IsKeyboardEnabled;
  using Base::IsMouseEnabled;
  using Base::IsVisible;
  using Base::SetAttribute;
  using Base::SetBkImage;
  using Base::SetEnabled;
  using Base::SetFadeVisible;
  using Base::SetFocus;
  using Base::SetKeyboardEnabled;
  using Base::SetMouseEnabled;
  using Base::SetToolTipText;
  using Base::SetVisible;
};

// T has a static constexpr ControlClass kClass.
template <class T, class I, class Base>
class ControlT : public FacedControl<I, Base> {
 public:
  LUMO_LAYER ControlT() = default;
  LUMO_LAYER ~ControlT() override = default;

  ControlClass Class() const override { return T::kClass; }
};

}  // namespace lumo
