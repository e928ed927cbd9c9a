// ControlT: a control's public face in front of its ControlBase part, made from the class itself, the face and the
// base.
#pragma once

#include "lumo/controls/control_base.h"
#include "lumo/controls/control_interfaces.h"

namespace lumo {

// T has a static constexpr ControlClass kClass.
template <class T, class I, class Base>
class ControlT : public I, public Base {
 public:
  ControlClass Class() const override { return T::kClass; }
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

}  // namespace lumo
