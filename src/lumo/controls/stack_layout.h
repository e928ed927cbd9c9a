// Children one after the other along an axis, stretch children sharing what is left. The axis is the only difference
// between VLayout and HLayout.
#pragma once

#include "lumo/controls/layout.h"

namespace lumo {

enum class Axis : BYTE { Vertical, Horizontal };

template <Axis A>
class StackLayout : public Layout {
 public:
  SIZE ArrangeChild(const ControlList& children, const RECT& inner) override;
  SIZE EstimateLayout(const ControlList& children, SIZE available) override;
};

extern template class StackLayout<Axis::Vertical>;
extern template class StackLayout<Axis::Horizontal>;

}  // namespace lumo
