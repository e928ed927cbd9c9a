// BoxT: ControlT for containers, whose face has a container's operations as well.
#pragma once

#include "lumo/controls/box_base.h"
#include "lumo/controls/control_t.h"

namespace lumo {

template <class T, class I, class Base>
class BoxT : public ControlT<T, I, Base> {
 public:
  LUMO_LAYER BoxT() = default;
  LUMO_LAYER ~BoxT() override = default;

  using Base::Add;
  using Base::AddAt;
  using Base::GetCount;
  using Base::GetItemAt;
  using Base::GetItemIndex;
  using Base::Remove;
  using Base::RemoveAll;
  using Base::RemoveAt;
  using Base::SetItemIndex;
};

}  // namespace lumo
