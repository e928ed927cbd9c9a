// Placing one child in a rectangle by its own size, margin and alignment.
#pragma once

#include "lumo/controls/control_base.h"
#include "lumo/core/weak.h"

namespace lumo {

class BoxBase;

// A measured size within the child's minimum and maximum.
SIZE ClampToBounds(const ControlBase& child, SIZE size);

// The size that the child got; (0, 0) and nothing done for an invisible one. The child may be gone afterwards.
SIZE PlaceChild(ControlBase& child, const RECT& rect);

// For loops over a container's children that call out: tells whether the container and its list are still what they
// were. Without a window nobody is called and everything holds.
class ListGuard {
 public:
  explicit ListGuard(BoxBase* box);
  bool Holds() const { return !watching_ || StillSame(); }

 private:
  bool StillSame() const;

  BoxBase* box_;
  unsigned version_;
  bool watching_;
  WeakRef<ControlBase> alive_;
};

}  // namespace lumo
