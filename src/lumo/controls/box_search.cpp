// A container's search through its subtree.
#include "lumo/controls/box_base.h"

#include "lumo/controls/layout_math.h"

namespace lumo {

ControlBase* BoxBase::FindControl(FindControlProc proc, void* data, unsigned flags) {
  if ((flags & FindVisible) && !IsVisible()) return nullptr;
  if ((flags & FindEnabled) && !IsEnabled()) return nullptr;
  if (flags & FindHitTest) {
    if (!PtInRect(&Position(), *static_cast<const POINT*>(data))) return nullptr;
    if (!IsMouseChildEnabled()) return ControlBase::FindControl(proc, data, flags);
  }
  if (flags & FindSelfFirst) {
    if (ControlBase* const self = ControlBase::FindControl(proc, data, flags)) return self;
    return FindBelow(proc, data, flags);
  }
  if (ControlBase* const below = FindBelow(proc, data, flags)) return below;
  return ControlBase::FindControl(proc, data, flags);
}

ControlBase* BoxBase::FindBelow(FindControlProc proc, void* data, unsigned flags) {
  POINT point = {};
  bool inside = true;
  if (flags & FindHitTest) {
    point = *static_cast<const POINT*>(data);
    const RECT inner = Shrink(Position(), GetLayout().ScaledPadding());
    inside = PtInRect(&inner, point);
    point = {ToLong(LONGLONG{point.x} + scroll_.x), ToLong(LONGLONG{point.y} + scroll_.y)};
    data = &point;
  }
  // By index, and with the count looked at each time: the callback may change the list.
  for (size_t i = 0; i < children_.size(); ++i) {
    ControlBase* const child = children_[flags & FindTopFirst ? children_.size() - 1 - i : i];
    ControlBase* const found = child->FindControl(proc, data, flags);
    if (found && (inside || found->IsFloating())) return found;
  }
  return nullptr;
}

}  // namespace lumo
