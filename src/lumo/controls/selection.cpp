#include "lumo/controls/selection.h"

#include "lumo/controls/attribute_table.h"
#include "lumo/controls/control_looks.h"
#include "lumo/controls/control_text.h"
#include "lumo/core/window.h"

namespace lumo {
namespace {

using Row = AttributeRow<Selection>;

template <int State>
void SetColorOf(Selection& selection, StringView text) {
  selection.SetColor(State, text);
}
template <ControlBase::ImageKind Kind, int State>
void SetImageOf(Selection& selection, StringView text) {
  selection.SetImage(Kind, State, text);
}
constexpr auto kBack = ControlBase::SelectedBackImages;
constexpr auto kFore = ControlBase::SelectedForeImages;
template <int State>
constexpr auto kColor = kValueAs<Selection, ValueKind::Color, &SetColorOf<State>>;
template <ControlBase::ImageKind Kind, int State>
constexpr auto kImage = kValueAs<Selection, ValueKind::Image, &SetImageOf<Kind, State>>;

constexpr Row kAttributes[] = {
    {TEXT("selecteddisabledcolor"), kColor<StateDisabled>},
    {TEXT("selecteddisabledimage"), kImage<kBack, StateDisabled>},
    {TEXT("selectedforedisabledimage"), kImage<kFore, StateDisabled>},
    {TEXT("selectedforehotimage"), kImage<kFore, StateHot>},
    {TEXT("selectedforenormalimage"), kImage<kFore, StateNormal>},
    {TEXT("selectedforepushedimage"), kImage<kFore, StatePushed>},
    {TEXT("selectedhotcolor"), kColor<StateHot>},
    {TEXT("selectedhotimage"), kImage<kBack, StateHot>},
    {TEXT("selectednormalcolor"), kColor<StateNormal>},
    {TEXT("selectednormalimage"), kImage<kBack, StateNormal>},
    {TEXT("selectedpushedcolor"), kColor<StatePushed>},
    {TEXT("selectedpushedimage"), kImage<kBack, StatePushed>},
    {TEXT("selectedtextcolor"), kValueAs<Selection, ValueKind::ColorName, &Selection::SetTextColor>},
};
static_assert(SortedAndUnique(kAttributes));

}  // namespace

bool IsNamed(const AttributeInfo& attribute, const WCHAR* name) { return TextOf(name) == attribute.name; }

Selection::Selection() = default;
Selection::~Selection() = default;

bool Selection::SetAttribute(const WCHAR* name, const WCHAR* value) {
  return ApplyAttribute(kAttributes, *this, TextOf(name), TextOf(value));
}

void Selection::ListAttributes(AttributeInfos* infos) {
  infos->push_back(kSelectedAttribute);
  ListRows(kAttributes, infos);
}

void Selection::SetTextColor(StringView color) {
  textColor_ = color;
  owner_->Invalidate();
}

void Selection::SetColor(int state, StringView text) {
  ColorSpec& color = colors_.At(state);
  if (color.text == text) return;
  color.Assign(text);
  owner_->Invalidate();
}

bool Selection::PaintColor(IRender* render) const {
  if (selected_) owner_->PaintColorOfState(render, colors_);
  return selected_;
}

bool Selection::PaintImages(IRender* render) const {
  if (!selected_) return false;
  owner_->PaintImagesOfState(render, kBack);
  owner_->PaintImagesOfState(render, kFore);
  return true;
}

bool Selection::PaintText(IRender* render, const ControlText& text) const {
  if (selected_) text.PaintSelected(render, textColor_);
  return selected_;
}

ImageAttribute* Selection::SizingImage() const {
  if (!owner_->Looks()) return nullptr;
  const StateValues<ImageAttribute>& images = owner_->Looks()->stateImages[kBack];
  return images.Has(StateNormal) ? images.Find(StateNormal) : nullptr;
}

bool SendFrom(ControlBase& control, int type) {
  Window* const window = control.GetWindow();
  if (!window) return true;
  const WeakRef<ControlBase> self(&control);
  window->SendNotify(&control, type, 0, 0);
  return static_cast<bool>(self);
}

}  // namespace lumo
