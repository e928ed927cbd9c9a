// How a control paints itself: order, clip, opacity and the off-screen copy.
#include "lumo/controls/control_base.h"
#include "lumo/controls/control_looks.h"
#include "lumo/controls/layout_math.h"
#include "lumo/core/global_resources.h"
#include "lumo/core/window.h"
#include "lumo/render/image_painter.h"
#include "lumo/render/render.h"

namespace lumo {

void ControlBase::Paint(IRender* render, const RECT& dirty) {
  RECT met;
  if (alpha_ <= 0 || !IntersectRect(&met, &dirty, &position_)) return;
  if (alpha_ >= 255 && !cache_) {
    PaintDirect(render, dirty);
  } else {
    PaintThroughCopy(render, dirty);
  }
}

void ControlBase::PaintDirect(IRender* render, const RECT& dirty) {
  const AutoClip clip(render, position_);
  const POINT offset = looks_ ? looks_->renderOffset : POINT{};
  const POINT origin = render->OffsetOrigin(offset.x, offset.y);
  DoPaint(render, dirty);
  PaintChildren(render, dirty);
  render->SetOrigin(origin.x, origin.y);
}

// A kept copy holds the control's own painting and is whole; a translucent control's copy holds its children as well
// and lives for this once.
void ControlBase::PaintThroughCopy(IRender* render, const RECT& dirty) {
  const bool translucent = alpha_ < 255;
  RECT part;
  IntersectRect(&part, &dirty, &position_);
  ControlLooks& looks = EditLooks();
  if (!looks.copy) looks.copy = MakeRender();
  IRender* const copy = looks.copy.get();
  const bool fresh = copy->Resize(ToLong(WideWidth(position_)), ToLong(WideHeight(position_)), true);
  if (fresh || dirty_) FillCopy(copy, translucent ? part : position_, translucent);
  render->AlphaBlend(part, copy->GetDC(), Shift(part, -LONGLONG{position_.left}, -LONGLONG{position_.top}),
                     static_cast<BYTE>(alpha_));
  if (translucent) {
    looks.copy.reset();
  } else {
    PaintChildren(render, dirty);
  }
}

void ControlBase::FillCopy(IRender* copy, const RECT& painted, bool with_children) {
  copy->Clear();
  const AutoClip clip(copy, {0, 0, ToLong(WideWidth(position_)), ToLong(WideHeight(position_))});
  const POINT offset = looks_->renderOffset;
  const POINT origin = copy->SetOrigin(offset.x + position_.left, offset.y + position_.top);
  DoPaint(copy, painted);
  if (with_children) PaintChildren(copy, painted);
  copy->SetOrigin(origin.x, origin.y);
  dirty_ = false;
}

void ControlBase::DoPaint(IRender* render, const RECT& dirty) {
  if (!IntersectRect(&paintRect_, &position_, &dirty)) return;
  PaintBkColor(render);
  PaintBkImage(render);
  PaintStateColor(render);
  PaintStateImages(render);
  PaintText(render);
  PaintBorder(render);
  PaintStateBorder(render);
}

void ControlBase::PaintChildren(IRender*, const RECT&) {}
void ControlBase::PaintText(IRender*) {}

void ControlBase::FillWith(IRender* render, const ColorSpec& color, const RECT& place) const {
  FillWhole(render, color, color.HasDest() ? Shift(ScaleRect(color.dest, Scale()), place.left, place.top) : place);
}

void ControlBase::FillWhole(IRender* render, const ColorSpec& color, const RECT& dest) const {
  const RECT round = ScaledBorderRound();
  if (color.IsGradient()) {
    render->FillGradientByName(dest, round, color.color1, color.color2, color.mode, 255);
  } else if (const DWORD argb = GetColor(color.color)) {
    render->FillRect(dest, round, argb, 255);
  }
}

void ControlBase::PaintBkColor(IRender* render) {
  if (looks_ && !looks_->bkColor.IsEmpty()) FillWith(render, looks_->bkColor, position_);
}

void ControlBase::PaintColorOfState(IRender* render, const StateValues<ColorSpec>& colors) {
  if (const ColorSpec* const color = colors.Shown(state_)) FillWith(render, *color, paintRect_);
}

void ControlBase::PaintStateColor(IRender* render) {
  if (looks_) PaintColorOfState(render, looks_->stateColors);
}

void ControlBase::PaintImage(IRender* render, ImageAttribute& image, const RECT* target) {
  const ImagePlace place = {window_, Scale(), position_, paintRect_, ScaledBorderRound()};
  AnimatedBackground background;
  if (looks_) {
    background = {&looks_->bkImage, this, [](WeakBase* owner) { static_cast<ControlBase*>(owner)->Invalidate(); }};
  }
  lumo::PaintImage(render, place, image, target, background);
}

void ControlBase::PaintBkImage(IRender* render) {
  if (ImageAttribute* const image = BackgroundImage()) PaintImage(render, *image, nullptr);
}

void ControlBase::PaintImagesOfState(IRender* render, ImageKind kind) {
  if (!looks_) return;
  int shown = -1;
  ImageAttribute* const image = looks_->stateImages[kind].Shown(state_, &shown);
  if (!image) return;
  if (state_ == StatePushed && shown == StateHot) image->fade = 255;
  PaintImage(render, *image, nullptr);
}

void ControlBase::PaintStateImages(IRender* render) {
  PaintImagesOfState(render, BackImages);
  PaintImagesOfState(render, ForeImages);
}

void ControlBase::OutlineWith(IRender* render, StringView color_name) const {
  const LONG size = ScaledBorderSize();
  if (size <= 0) return;
  const RECT round = ScaledBorderRound();
  const bool even = round.left == round.top && round.top == round.right && round.right == round.bottom;
  const LONGLONG width = WideWidth(position_);
  if (even && width == WideHeight(position_) && width == LONGLONG{round.left} * 2) {
    render->DrawCircleByName(position_, size, color_name);
  } else {
    render->DrawRoundRectByName(position_, round, size, color_name);
  }
}

void ControlBase::PaintBorder(IRender* render) {
  if (looks_ && !looks_->borderColor.empty() && GetColor(looks_->borderColor)) OutlineWith(render, looks_->borderColor);
}

void ControlBase::PaintStateBorder(IRender* render) {
  if (!looks_) return;
  if (const ColorSpec* const color = looks_->stateBorderColors.Shown(state_)) OutlineWith(render, color->color);
}

}  // namespace lumo
