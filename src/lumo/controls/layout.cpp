#include "lumo/controls/layout.h"

#include "lumo/controls/attribute_table.h"
#include "lumo/controls/box_base.h"
#include "lumo/controls/layout_math.h"
#include "lumo/controls/place_child.h"

#include <algorithm>

namespace lumo {

namespace {

constexpr AttributeRow<Layout> kAttributes[] = {
    {TEXT("childmargin"), kValueAs<Layout, ValueKind::Integer, &Layout::SetChildMargin>},
    {TEXT("padding"), kValueAs<Layout, ValueKind::Rect, &Layout::SetPadding>},
};
static_assert(SortedAndUnique(kAttributes));

}  // namespace

bool Layout::SetAttribute(StringView name, const WCHAR* value) {
  return ApplyAttribute(kAttributes, *this, name, TextOf(value));
}

void Layout::ListAttributes(AttributeInfos* infos) { ListRows(kAttributes, infos); }

void Layout::SetPadding(const RECT& design) {
  padding_ = design;
  owner_->Arrange();
}

void Layout::SetChildMargin(LONG design) {
  childMargin_ = ScaleLength(design, owner_->Scale());
  owner_->Arrange();
}

RECT Layout::ScaledPadding() const { return IsZero(padding_) ? padding_ : ScaleRect(padding_, owner_->Scale()); }

SIZE Layout::WithPadding(LONGLONG width, LONGLONG height) const {
  const RECT padding = ScaledPadding();
  return {ToLong(width + padding.left + padding.right), ToLong(height + padding.top + padding.bottom)};
}

SIZE Layout::ArrangeChild(const ControlList& children, const RECT& inner) {
  const ListGuard guard(owner_);
  SIZE used = {};
  for (size_t i = 0; i < children.size(); ++i) {
    const SIZE placed = PlaceChild(*children[i], inner);
    used = {std::max(used.cx, placed.cx), std::max(used.cy, placed.cy)};
    if (!guard.Holds()) break;
  }
  return used;
}

SIZE Layout::EstimateLayout(const ControlList& children, SIZE available) {
  LONGLONG width = -9999, height = -9999;
  for (ControlBase* const child : children) {
    if (!child->IsVisible()) continue;
    const RECT margin = child->ScaledMargin();
    const SIZE size = ClampToBounds(*child, child->EstimateSize(available));
    width = std::max(width, LONGLONG{margin.left} + margin.right + size.cx);
    height = std::max(height, LONGLONG{margin.top} + margin.bottom + size.cy);
  }
  return WithPadding(width, height);
}

}  // namespace lumo
