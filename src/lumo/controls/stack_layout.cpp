#include "lumo/controls/stack_layout.h"

#include "lumo/controls/box_base.h"
#include "lumo/controls/layout_math.h"
#include "lumo/controls/place_child.h"

#include <algorithm>

namespace lumo {
namespace {

// The two directions of an axis: "along" is where children follow each other, "across" the other one.
template <Axis A>
struct Directions {
  static constexpr bool kDown = A == Axis::Vertical;

  static LONG& Along(SIZE& size) { return kDown ? size.cy : size.cx; }
  static LONG& Across(SIZE& size) { return kDown ? size.cx : size.cy; }
  static LONG Before(const RECT& rect) { return kDown ? rect.top : rect.left; }
  static LONG After(const RECT& rect) { return kDown ? rect.bottom : rect.right; }
  static LONG Near(const RECT& rect) { return kDown ? rect.left : rect.top; }
  static LONG Far(const RECT& rect) { return kDown ? rect.right : rect.bottom; }
  static SIZE Size(LONGLONG along, LONGLONG across) {
    return kDown ? SIZE{ToLong(across), ToLong(along)} : SIZE{ToLong(along), ToLong(across)};
  }
  static RECT Rect(LONGLONG along, LONGLONG across, LONGLONG length, LONGLONG breadth) {
    return kDown ? MakeRect(across, along, across + breadth, along + length)
                 : MakeRect(along, across, along + length, across + breadth);
  }
  static LONGLONG ClampAlong(const ControlBase& child, LONGLONG length) {
    return kDown ? ClampLength(length, child.ScaledMinHeight(), child.ScaledMaxHeight())
                 : ClampLength(length, child.ScaledMinWidth(), child.ScaledMaxWidth());
  }
  static LONGLONG ClampAcross(const ControlBase& child, LONGLONG breadth) {
    return kDown ? ClampLength(breadth, child.ScaledMinWidth(), child.ScaledMaxWidth())
                 : ClampLength(breadth, child.ScaledMinHeight(), child.ScaledMaxHeight());
  }
  static int AlignOf(const ControlBase& child) { return kDown ? int{child.HorizontalAlign()} : child.VerticalAlign(); }
};

bool TakesPart(const ControlBase& child) { return !child.IsFloating() && child.IsVisible(); }

// What the first pass over the children finds out.
struct Demand {
  LONGLONG children = 0;
  LONGLONG stretching = 0;
  LONGLONG fixed = 0;  // margins and sizes that are not shared out

  LONGLONG Gaps(LONGLONG gap) const { return children > 1 ? gap * (children - 1) : 0; }
};

template <Axis A>
Demand AddUp(const ControlList& children, SIZE room) {
  using D = Directions<A>;
  Demand demand;
  for (ControlBase* const child : children) {
    if (!TakesPart(*child)) continue;
    ++demand.children;
    const RECT margin = child->ScaledMargin();
    SIZE size = child->EstimateSize(room);
    demand.fixed += LONGLONG{D::Before(margin)} + D::After(margin);
    if (D::Along(size) == SizeStretch) {
      ++demand.stretching;
    } else {
      demand.fixed += D::ClampAlong(*child, D::Along(size));
    }
  }
  return demand;
}

// The second pass: where the next child goes and what is left for it.
template <Axis A>
class Placement {
  using D = Directions<A>;

 public:
  Placement(const RECT& inner, StretchShares shares, LONGLONG gap)
      : inner_(inner),
        shares_(shares),
        gap_(gap),
        cursor_(D::Before(inner)),
        left_(LONGLONG{D::After(inner)} - cursor_) {}

  void Place(ControlBase& child) {
    const RECT margin = child.ScaledMargin();
    const LONGLONG breadth_there = LONGLONG{D::Far(inner_)} - D::Near(inner_);
    left_ -= D::Before(margin);
    SIZE size = child.EstimateSize(D::Size(left_, breadth_there));
    const LONGLONG length = D::ClampAlong(child, D::Along(size) == SizeStretch ? TakeShare() : D::Along(size));
    const LONGLONG room = breadth_there - D::Near(margin) - D::Far(margin);
    const LONGLONG wanted = D::Across(size) == SizeStretch ? room : D::Across(size);
    const LONGLONG breadth = D::ClampAcross(child, wanted < 0 ? 0 : wanted);
    const LONGLONG along = cursor_ + D::Before(margin);
    const LONGLONG across = AcrossOf(D::AlignOf(child), margin, breadth_there, breadth);
    Advance(margin, length, breadth);
    child.SetPos(D::Rect(along, across, length, breadth));
  }

  SIZE Used(LONGLONG gaps) const { return D::Size(used_ + gaps, broadest_); }

 private:
  LONGLONG TakeShare() {
    if (shares_.extra <= 0) return shares_.each;
    --shares_.extra;
    return shares_.each + 1;
  }

  LONGLONG AcrossOf(int align, const RECT& margin, LONGLONG there, LONGLONG breadth) const {
    if (align == 2) return LONGLONG{D::Far(inner_)} - D::Far(margin) - breadth;
    if (align == 1) return D::Near(inner_) + (there - breadth + D::Near(margin) - D::Far(margin)) / 2;
    return LONGLONG{D::Near(inner_)} + D::Near(margin);
  }

  void Advance(const RECT& margin, LONGLONG length, LONGLONG breadth) {
    cursor_ += D::Before(margin) + length + D::After(margin) + gap_;
    used_ += D::Before(margin) + length + D::After(margin);
    left_ -= length + D::After(margin) + gap_;
    broadest_ = std::max(broadest_, breadth);
  }

  RECT inner_;
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
  using D = Directions<A>;
  const LONGLONG gap = GetChildMargin();
  const LONGLONG room = LONGLONG{D::After(inner)} - D::Before(inner);
  Demand demand = AddUp<A>(children, {ToLong(WideWidth(inner)), ToLong(WideHeight(inner))});
  demand.fixed += demand.Gaps(gap);
  Placement<A> placement(inner, ShareOut(room, demand.fixed, demand.stretching), gap);
  const ListGuard guard(Owner());
  for (size_t i = 0; i < children.size(); ++i) {
    ControlBase& child = *children[i];
    if (TakesPart(child)) {
      placement.Place(child);
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
  using D = Directions<A>;
  LONGLONG count = 0, along = 0, across = 0;
  for (ControlBase* const child : children) {
    if (!TakesPart(*child)) continue;
    ++count;
    const RECT margin = child->ScaledMargin();
    SIZE size = child->EstimateSize(available);
    along += LONGLONG{D::Before(margin)} + D::After(margin) + D::ClampAlong(*child, D::Along(size));
    across = std::max(across, LONGLONG{D::Near(margin)} + D::Far(margin) + D::ClampAcross(*child, D::Across(size)));
  }
  if (count > 1) along += LONGLONG{GetChildMargin()} * (count - 1);
  const SIZE content = D::Size(along, across);
  return WithPadding(content.cx, content.cy);
}

template class StackLayout<Axis::Vertical>;
template class StackLayout<Axis::Horizontal>;

}  // namespace lumo
