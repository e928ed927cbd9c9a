#include "lumo/controls/place_child.h"

#include "lumo/controls/box_base.h"
#include "lumo/controls/layout_math.h"

namespace lumo {
namespace {

constexpr LONG kUnforced = -1;

// A label of automatic size that may be as wide as its place: measured again at that width, so that it wraps.
bool WrapsAt(const ControlBase& child, SIZE size, LONG width) {
  const SizeRules& sizes = child.Sizes();
  return sizes.width == SizeAuto && sizes.height == SizeAuto && sizes.maxWidth == SizeStretch && size.cx > width;
}

SIZE MeasureAtWidth(ControlBase& child, LONG width, SIZE available) {
  child.ForceWidth(width);
  const SIZE size = child.EstimateSize(available);
  child.ForceWidth(kUnforced);
  return size;
}

}  // namespace

SIZE ClampToBounds(const ControlBase& child, SIZE size) {
  return {ToLong(ClampLength(size.cx, child.ScaledMinWidth(), child.ScaledMaxWidth())),
          ToLong(ClampLength(size.cy, child.ScaledMinHeight(), child.ScaledMaxHeight()))};
}

SIZE PlaceChild(ControlBase& child, const RECT& rect) {
  if (!child.IsVisible()) return {};
  const RECT inner = Shrink(rect, child.ScaledMargin());
  const SIZE available = {ToLong(WideWidth(inner)), ToLong(WideHeight(inner))};
  const SIZE room = {available.cx > 0 ? available.cx : 0, available.cy > 0 ? available.cy : 0};
  SIZE size = child.EstimateSize(available);
  if (WrapsAt(child, size, room.cx)) size = MeasureAtWidth(child, room.cx, available);
  if (size.cx == SizeStretch) size.cx = room.cx;
  if (size.cy == SizeStretch) size.cy = room.cy;
  size = ClampToBounds(child, size);
  const LONGLONG x = AlignBetween(child.HorizontalAlign(), inner.left, inner.right, size.cx);
  const LONGLONG y = AlignBetween(child.VerticalAlign(), inner.top, inner.bottom, size.cy);
  child.SetPos(MakeRect(x, y, x + size.cx, y + size.cy));
  return size;
}

ListGuard::ListGuard(BoxBase* box) : box_(box), version_(box->ListVersion()), watching_(box->GetWindow() != nullptr) {
  if (watching_) alive_ = WeakRef<ControlBase>(box);
}

bool ListGuard::StillSame() const { return alive_ && box_->ListVersion() == version_; }

}  // namespace lumo
