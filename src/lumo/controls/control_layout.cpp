// A control's size rules, measurement and place.
#include "lumo/controls/box_base.h"
#include "lumo/controls/control_base.h"
#include "lumo/controls/control_looks.h"
#include "lumo/controls/layout_math.h"
#include "lumo/core/window.h"
#include "lumo/render/image_cache.h"
#include "lumo/render/image_info.h"

#include <algorithm>

namespace lumo {

int ControlBase::Scale() const {
  const int percent = window_ ? window_->ScalePercent() : GlobalScalePercent();
  return percent > 0 ? percent : 100;
}

LONG ControlBase::ScaledWidth() const {
  if (forcedWidth_ >= 0) return forcedWidth_;
  return sizes_.width <= 0 ? sizes_.width : ScaleLength(sizes_.width, Scale());
}
LONG ControlBase::ScaledHeight() const {
  return sizes_.height <= 0 ? sizes_.height : ScaleLength(sizes_.height, Scale());
}

namespace {
// Most controls have no bounds: those do not ask for the scale.
LONG Limit(LONG value, const ControlBase& control) {
  return value <= 0 || value == INT_MAX ? value : ScaleLimit(value, control.Scale());
}
}  // namespace

LONG ControlBase::ScaledMinWidth() const { return Limit(sizes_.minWidth, *this); }
LONG ControlBase::ScaledMinHeight() const { return Limit(sizes_.minHeight, *this); }
LONG ControlBase::ScaledMaxWidth() const { return Limit(sizes_.maxWidth, *this); }
LONG ControlBase::ScaledMaxHeight() const { return Limit(sizes_.maxHeight, *this); }

RECT ControlBase::ScaledMargin() const { return IsZero(margin_) ? margin_ : ScaleRect(margin_, Scale()); }
LONG ControlBase::ScaledBorderSize() const { return ScaleLength(borderSize_, Scale()); }
RECT ControlBase::ScaledBorderRound() const { return looks_ ? ScaleRect(looks_->borderRound, Scale()) : RECT{}; }

void ControlBase::ForceWidth(LONG devicePixels) {
  forcedWidth_ = devicePixels;
  needsMeasure_ = true;
}

void ControlBase::ChangeFixed(LONG SizeRules::*rule, LONG value) {
  if (value < SizeAuto || sizes_.*rule == value) return;
  sizes_.*rule = value;
  ArrangeAncestor();
}

void ControlBase::SetFixedWidth(LONG width) { ChangeFixed(&SizeRules::width, width); }
void ControlBase::SetFixedHeight(LONG height) { ChangeFixed(&SizeRules::height, height); }

void ControlBase::ChangeBound(LONG SizeRules::*rule, LONG value) {
  if (sizes_.*rule == value) return;
  sizes_.*rule = value;
  if (IsFloating()) {
    Arrange();
  } else {
    ArrangeAncestor();
  }
}

void ControlBase::SetMaxWidth(LONG width) { ChangeBound(&SizeRules::maxWidth, width); }
void ControlBase::SetMaxHeight(LONG height) { ChangeBound(&SizeRules::maxHeight, height); }
void ControlBase::SetMinWidth(LONG width) {
  if (width >= 0) ChangeBound(&SizeRules::minWidth, width);
}
void ControlBase::SetMinHeight(LONG height) {
  if (height >= 0) ChangeBound(&SizeRules::minHeight, height);
}

void ControlBase::SetMargin(const RECT& margin) {
  if (SameRect(margin_, margin)) return;
  margin_ = margin;
  ArrangeAncestor();
}

void ControlBase::SetFloat(int value) {
  if (float_ == value) return;
  float_ = value;
  ArrangeAncestor();
}

void ControlBase::Arrange() {
  if (DependsOnContent()) {
    ArrangeAncestor();
  } else {
    InvalidateLayout();
  }
}

void ControlBase::ArrangeAncestor() {
  needsMeasure_ = true;
  ControlBase* ancestor = parent_;
  while (ancestor && ancestor->DependsOnContent()) {
    ancestor->needsMeasure_ = true;
    ancestor = ancestor->parent_;
  }
  if (!ancestor) ancestor = window_ ? window_->Root() : parent_;
  (ancestor ? ancestor : this)->InvalidateLayout();
}

void ControlBase::RelayoutOrInvalidate() {
  if (DependsOnContent()) {
    ArrangeAncestor();
  } else {
    Invalidate();
  }
}

void ControlBase::InvalidateLayout() {
  needsMeasure_ = true;
  MarkForArrange();
  Invalidate();
  if (window_) window_->RequestLayout();
}

void ControlBase::MarkForArrange() {
  needsArrange_ = true;
  NoteArrangeBelow();
}

void ControlBase::NoteArrangeBelow() {
  for (ControlBase* above = parent_; above && !above->arrangeBelow_; above = above->parent_)
    above->arrangeBelow_ = true;
}

ControlBase* ControlBase::FirstNeedingArrange() {
  if (!IsVisible()) return nullptr;
  if (needsArrange_) return this;
  BoxBase* const box = arrangeBelow_ ? AsBox() : nullptr;
  if (!box) return nullptr;
  bool below = false;
  for (ControlBase* const child : box->Children()) {
    if (ControlBase* const found = child->FirstNeedingArrange()) return found;
    below = below || child->needsArrange_ || child->arrangeBelow_;
  }
  arrangeBelow_ = below;  // hidden ones keep theirs
  return nullptr;
}

void ControlBase::SetPos(RECT rect) { MoveTo(rect); }

bool ControlBase::MoveTo(RECT rect) {
  rect.right = std::max(rect.right, rect.left);
  rect.bottom = std::max(rect.bottom, rect.top);
  if (SameRect(rect, position_)) {
    needsArrange_ = false;
    return true;
  }
  const RECT old = position_;
  position_ = rect;
  if (!window_) return true;
  if (!inPositionNotify_) {
    const WeakRef<ControlBase> self(this);
    inPositionNotify_ = true;
    window_->SendNotify(this, EventPosition, 0, 0);
    if (!self) return false;
    inPositionNotify_ = false;
  }
  needsArrange_ = false;
  InvalidateMoved(old);
  return true;
}

SIZE ControlBase::EstimateSize(SIZE available) {
  LONG width = ScaledWidth(), height = ScaledHeight();
  if (width != SizeAuto && height != SizeAuto) return {width, height};
  if (!needsMeasure_) return estimated_;
  ImageAttribute* const image = GetSizingImage();
  if (image && IsGiven(image->source)) {
    SizeFromSource(image->source);
    return {ScaledWidth(), ScaledHeight()};
  }
  const SIZE picture = ImageSize(image);
  needsMeasure_ = false;
  const SIZE content = EstimateContent(available);
  if (width == SizeAuto) width = std::max({LONG{0}, picture.cx, content.cx});
  if (height == SizeAuto) height = std::max({LONG{0}, picture.cy, content.cy});
  estimated_ = {width, height};
  return estimated_;
}

SIZE ControlBase::EstimateContent(SIZE) { return {}; }

void ControlBase::SizeFromSource(const RECT& source) {
  const LONG width = ToLong(WideWidth(source)), height = ToLong(WideHeight(source));
  if (width != ScaledWidth()) SetFixedWidth(width);
  if (height != ScaledHeight()) SetFixedHeight(height);
}

// Device pixels; (0, 0) without a picture.
SIZE ControlBase::ImageSize(ImageAttribute* image) const {
  if (!image || !LoadImage(*image, window_)) return {};
  const ImageInfo& info = *image->image;
  const int scale = info.scaled ? 100 : Scale();
  return {ScaleLength(info.width, scale), ScaleLength(info.height, scale)};
}

POINT ControlBase::ScrollShift() const {
  for (ControlBase* above = parent_; above; above = above->parent_) {
    const BoxBase* const box = above->AsBox();
    if (box && box->IsScrolled()) return box->ScrollOffset();
  }
  return {};
}

bool ControlBase::HitTest(POINT point) const {
  const POINT shift = ScrollShift();
  const POINT shifted = {ToLong(LONGLONG{point.x} + shift.x), ToLong(LONGLONG{point.y} + shift.y)};
  return PtInRect(&position_, shifted);
}

void ControlBase::Invalidate() {
  dirty_ = true;  // a hidden control's copy must not be shown again as it was
  if (!window_ || !IsVisible()) return;
  const POINT shift = ScrollShift();
  InvalidateRectangle(Shift(position_, -shift.x, -shift.y));
}

void ControlBase::InvalidateMoved(const RECT& old) {
  if (!window_->Handle()) return;
  RECT area = IsEmpty(old) ? position_ : Join(old, position_);
  const POINT shift = ScrollShift();
  area = Shift(area, -shift.x, -shift.y);
  for (const ControlBase* above = parent_; above && !IsEmpty(area); above = above->parent_) {
    area = CommonPart(area, above->position_);
  }
  if (!IsEmpty(area)) InvalidateRectangle(area);
}

void ControlBase::InvalidateRectangle(const RECT& rect) const {
  const HWND window = window_->Handle();
  if (!window) return;
  InvalidateRect(window, &rect, FALSE);
  if (window_->IsLayered()) PostMessageW(window, WM_PAINT, 0, 0);
}

}  // namespace lumo
