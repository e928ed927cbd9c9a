#include "lumo/controls/stack_layout.h"

#include "lumo/controls/box_base.h"
#include "lumo/controls/layout_math.h"
#include "lumo/controls/place_child.h"
#include "lumo/core/scaling.h"

#include <algorithm>

namespace lumo {
namespace {

// What a child asks for, in device pixels.
struct Wishes {
  RECT margin;
  SizeRules sizes;
};

[[gnu::noinline]] void ScaleWishes(const ControlBase& child, int scale, Wishes* scaled) {
  const SizeRules& sizes = child.Sizes();
  scaled->margin = ScaleRect(child.Margin(), scale);
  scaled->sizes.width = ScaleLength(sizes.width, scale);
  scaled->sizes.height = ScaleLength(sizes.height, scale);
  scaled->sizes.minWidth = ScaleLimit(sizes.minWidth, scale);
  scaled->sizes.minHeight = ScaleLimit(sizes.minHeight, scale);
  scaled->sizes.maxWidth = ScaleLimit(sizes.maxWidth, scale);
  scaled->sizes.maxHeight = ScaleLimit(sizes.maxHeight, scale);
}

// A child seen along an axis: "along" is where children follow each other, "across" the other direction. Large trees
// consist of children that have nothing to measure, so nothing is called, copied or scaled for those without need.
template <Axis A>
class Child {
  static constexpr bool kDown = A == Axis::Vertical;

 public:
  struct Extent {
    LONG along;
    LONG across;
  };

  // All children of a container have its scale. `storage` outlives the child.
  Child(ControlBase& control, int scale, Wishes* storage)
      : control_(control), margin_(&control.Margin()), sizes_(&control.Sizes()) {
    if (scale == 100) [[likely]]
      return;
    ScaleWishes(control, scale, storage);
    margin_ = &storage->margin;
    sizes_ = &storage->sizes;
  }

  LONG Before() const { return kDown ? margin_->top : margin_->left; }
  LONG After() const { return kDown ? margin_->bottom : margin_->right; }
  LONG Near() const { return kDown ? margin_->left : margin_->top; }
  LONG Far() const { return kDown ? margin_->right : margin_->bottom; }
  int Align() const { return kDown ? int{control_.HorizontalAlign()} : control_.VerticalAlign(); }

  // What EstimateSize answers.
  Extent Estimate(LONGLONG along, LONGLONG across) const {
    if (control_.DependsOnContent()) {
      const SIZE size =
          control_.EstimateSize(kDown ? SIZE{ToLong(across), ToLong(along)} : SIZE{ToLong(along), ToLong(across)});
      return kDown ? Extent{size.cy, size.cx} : Extent{size.cx, size.cy};
    }
    return kDown ? Extent{sizes_->height, sizes_->width} : Extent{sizes_->width, sizes_->height};
  }
  LONGLONG ClampAlong(LONGLONG length) const {
    return kDown ? ClampLength(length, sizes_->minHeight, sizes_->maxHeight)
                 : ClampLength(length, sizes_->minWidth, sizes_->maxWidth);
  }
  LONGLONG ClampAcross(LONGLONG breadth) const {
    return kDown ? ClampLength(breadth, sizes_->minWidth, sizes_->maxWidth)
                 : ClampLength(breadth, sizes_->minHeight, sizes_->maxHeight);
  }
  void Place(LONGLONG along, LONGLONG across, LONGLONG length, LONGLONG breadth) const {
    control_.SetPos(kDown ? MakeRect(across, along, across + breadth, along + length)
                          : MakeRect(along, across, along + length, across + breadth));
  }

 private:
  ControlBase& control_;
  const RECT* margin_;
  const SizeRules* sizes_;
};

bool TakesPart(const ControlBase& child) { return !child.IsFloating() && child.IsShown(); }

// A rectangle along and across the axis.
struct Room {
  LONGLONG before, beside, length, breadth;
};
template <Axis A>
Room RoomOf(const RECT& inner) {
  if constexpr (A == Axis::Vertical) return {inner.top, inner.left, WideHeight(inner), WideWidth(inner)};
  return {inner.left, inner.top, WideWidth(inner), WideHeight(inner)};
}

template <Axis A>
SIZE MakeSize(LONGLONG along, LONGLONG across) {
  if constexpr (A == Axis::Vertical) return {ToLong(across), ToLong(along)};
  return {ToLong(along), ToLong(across)};
}

// What the first pass over the children finds out.
struct Demand {
  LONGLONG children = 0;
  LONGLONG stretching = 0;
  LONGLONG fixed = 0;  // margins and sizes that are not shared out

  LONGLONG Gaps(LONGLONG gap) const { return children > 1 ? gap * (children - 1) : 0; }
};

template <Axis A>
Demand AddUp(const ControlList& children, const Room& room, int scale) {
  Demand demand;
  Wishes storage;
  for (ControlBase* const control : children) {
    if (!TakesPart(*control)) continue;
    ++demand.children;
    const Child<A> child(*control, scale, &storage);
    const LONG along = child.Estimate(room.length, room.breadth).along;
    demand.fixed += LONGLONG{child.Before()} + child.After();
    if (along == SizeStretch) {
      ++demand.stretching;
    } else {
      demand.fixed += child.ClampAlong(along);
    }
  }
  return demand;
}

// The second pass: where the next child goes and what is left for it.
template <Axis A>
class Placement {
 public:
  Placement(const Room& room, StretchShares shares, LONGLONG gap)
      : room_(room), shares_(shares), gap_(gap), cursor_(room.before), left_(room.length) {}

  void Place(const Child<A>& child) {
    left_ -= child.Before();
    const auto [along, across] = child.Estimate(left_, room_.breadth);
    const LONGLONG length = child.ClampAlong(along == SizeStretch ? TakeShare() : along);
    const LONGLONG wanted = across == SizeStretch ? room_.breadth - child.Near() - child.Far() : across;
    const LONGLONG breadth = child.ClampAcross(wanted < 0 ? 0 : wanted);
    const LONGLONG at = cursor_ + child.Before(), across_at = AcrossOf(child, breadth);
    Advance(child, length, breadth);
    child.Place(at, across_at, length, breadth);
  }

  SIZE Used(LONGLONG gaps) const { return MakeSize<A>(used_ + gaps, broadest_); }

 private:
  LONGLONG TakeShare() {
    if (shares_.extra <= 0) return shares_.each;
    --shares_.extra;
    return shares_.each + 1;
  }

  LONGLONG AcrossOf(const Child<A>& child, LONGLONG breadth) const {
    const int align = child.Align();
    if (align == 2) return room_.beside + room_.breadth - child.Far() - breadth;
    if (align == 1) return room_.beside + (room_.breadth - breadth + child.Near() - child.Far()) / 2;
    return room_.beside + child.Near();
  }

  void Advance(const Child<A>& child, LONGLONG length, LONGLONG breadth) {
    const LONGLONG taken = child.Before() + length + child.After();
    cursor_ += taken + gap_;
    used_ += taken;
    left_ -= length + child.After() + gap_;
    broadest_ = std::max(broadest_, breadth);
  }

  Room room_;
  StretchShares shares_;
  LONGLONG gap_;
  LONGLONG cursor_;
  LONGLONG left_;
  LONGLONG used_ = 0;
  LONGLONG broadest_ = 0;
};

}  // namespace

template <Axis A>
SIZE StackLayout<A>::ArrangeChild(const ControlList& children, const RECT& inner) {
  const LONGLONG gap = GetChildMargin();
  const int scale = Owner()->Scale();
  const Room room = RoomOf<A>(inner);
  Demand demand = AddUp<A>(children, room, scale);
  demand.fixed += demand.Gaps(gap);
  Placement<A> placement(room, ShareOut(room.length, demand.fixed, demand.stretching), gap);
  const ListGuard guard(Owner());
  Wishes storage;
  for (size_t i = 0; i < children.size(); ++i) {
    ControlBase& child = *children[i];
    if (TakesPart(child)) {
      placement.Place(Child<A>(child, scale, &storage));
    } else {
      if (!child.IsVisible()) continue;
      PlaceChild(child, inner);
    }
    if (!guard.Holds()) break;
  }
  return placement.Used(demand.Gaps(gap));
}

template <Axis A>
SIZE StackLayout<A>::EstimateLayout(const ControlList& children, SIZE available) {
  const Room room = RoomOf<A>({0, 0, available.cx, available.cy});
  const int scale = Owner()->Scale();
  LONGLONG count = 0, along = 0, across = 0;
  Wishes storage;
  for (ControlBase* const control : children) {
    if (!TakesPart(*control)) continue;
    ++count;
    const Child<A> child(*control, scale, &storage);
    const auto size = child.Estimate(room.length, room.breadth);
    along += LONGLONG{child.Before()} + child.After() + child.ClampAlong(size.along);
    across = std::max(across, LONGLONG{child.Near()} + child.Far() + child.ClampAcross(size.across));
  }
  if (count > 1) along += LONGLONG{GetChildMargin()} * (count - 1);
  const SIZE content = MakeSize<A>(along, across);
  return WithPadding(content.cx, content.cy);
}

template class StackLayout<Axis::Vertical>;
template class StackLayout<Axis::Horizontal>;

}  // namespace lumo
