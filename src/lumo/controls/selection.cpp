#include "lumo/controls/selection.h"

#include "lumo/controls/attribute_table.h"
#include "lumo/controls/control_looks.h"
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

constexpr Row kAttributes[] = {
    {TEXT("selecteddisabledcolor"), SetColorOf<StateDisabled>},
    {TEXT("selecteddisabledimage"), SetImageOf<kBack, StateDisabled>},
    {TEXT("selectedforedisabledimage"), SetImageOf<kFore, StateDisabled>},
    {TEXT("selectedforehotimage"), SetImageOf<kFore, StateHot>},
    {TEXT("selectedforenormalimage"), SetImageOf<kFore, StateNormal>},
    {TEXT("selectedforepushedimage"), SetImageOf<kFore, StatePushed>},
    {TEXT("selectedhotcolor"), SetColorOf<StateHot>},
    {TEXT("selectedhotimage"), SetImageOf<kBack, StateHot>},
    {TEXT("selectednormalcolor"), SetColorOf<StateNormal>},
    {TEXT("selectednormalimage"), SetImageOf<kBack, StateNormal>},
    {TEXT("selectedpushedcolor"), SetColorOf<StatePushed>},
    {TEXT("selectedpushedimage"), SetImageOf<kBack, StatePushed>},
    {TEXT("selectedtextcolor"), &ApplyAs<Selection, ReadText, &Selection::SetTextColor>},
};
static_assert(SortedAndUnique(kAttributes));

}  // namespace

bool Selection::SetAttribute(StringView name, StringView value) {
  return ApplyAttribute(kAttributes, *this, name, value);
}

void Selection::SetTextColor(StringView color) {
  textColor_ = color;
  owner_.Invalidate();
}

void Selection::SetColor(int state, StringView text) {
  ColorSpec& color = colors_.At(state);
  if (color.text == text) return;
  color.Assign(text);
  owner_.Invalidate();
}

ImageAttribute* Selection::SizingImage() const {
  if (!owner_.Looks()) return nullptr;
  const StateValues<ImageAttribute>& images = owner_.Looks()->stateImages[kBack];
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
