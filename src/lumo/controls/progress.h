// Progress and Slider: a value between a minimum and a maximum, shown as a filled part.
#pragma once

#include "lumo/controls/progress_template.h"

namespace lumo {

class Progress final : public ProgressTemplateTemplate<ControlT<Progress, IProgress, ControlBase>> {
 public:
  static constexpr ControlClass kClass = ControlClass::Progress;
};

class Slider final : public ProgressTemplateTemplate<ControlT<Slider, IProgress, ControlBase>> {
 public:
  static constexpr ControlClass kClass = ControlClass::Slider;
};

}  // namespace lumo
