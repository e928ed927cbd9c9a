// The attributes that every control takes.
#include "lumo/controls/attribute_table.h"
#include "lumo/controls/control_base.h"
#include "lumo/controls/control_looks.h"
#include "lumo/core/attribute_list.h"
#include "lumo/render/image_animation.h"

namespace lumo {

void ControlBase::ChangeColor(ColorSpec& color, StringView text) {
  if (color.text == text) return;
  color.Assign(text);
  Invalidate();
}

void ControlBase::SetBkColor(StringView text) { ChangeColor(EditLooks().bkColor, text); }
void ControlBase::SetStateColor(int state, StringView text) { ChangeColor(EditLooks().stateColors.At(state), text); }
void ControlBase::SetStateBorderColor(int state, StringView text) {
  ChangeColor(EditLooks().stateBorderColors.At(state), text);
}

void ControlBase::SetBorderColor(StringView name) {
  String& stored = EditLooks().borderColor;
  if (stored == name) return;
  stored = name;
  Invalidate();
}

void ControlBase::SetBorderSize(LONG size) {
  borderSize_ = size;
  Invalidate();
}

void ControlBase::SetBorderRound(const RECT& round) {
  EditLooks().borderRound = round;
  Invalidate();
}

void ControlBase::SetAlpha(int alpha) {
  alpha_ = alpha < 0 ? 0 : alpha > 255 ? 255 : alpha;
  Invalidate();
}

void ControlBase::SetRenderOffset(POINT design) {
  EditLooks().renderOffset = {ScaleLength(design.x, Scale()), ScaleLength(design.y, Scale())};
  Invalidate();
}

void ControlBase::SetBkImage(StringView text) {
  StopBackgroundAnimation();
  EditLooks().bkImage.Assign(text);
  RelayoutOrInvalidate();
}

void ControlBase::SetStateImage(ImageKind kind, int state, StringView text) {
  StopBackgroundAnimation();
  EditLooks().stateImages[kind].At(state).Assign(text);
  if (kind == BackImages || kind == SelectedBackImages) {
    RelayoutOrInvalidate();
  } else {
    Invalidate();
  }
}

namespace {

using Base = ControlBase;
using Row = AttributeRow<ControlBase>;

constexpr Keyword<HAlign> kHAligns[] = {
    {TEXT("left"), AlignLeft}, {TEXT("center"), AlignCenter}, {TEXT("right"), AlignRight}};
constexpr Keyword<VAlign> kVAligns[] = {
    {TEXT("top"), AlignTop}, {TEXT("center"), AlignMiddle}, {TEXT("bottom"), AlignBottom}};
constexpr Keyword<CursorType> kCursors[] = {
    {TEXT("arrow"), CursorArrow}, {TEXT("hand"), CursorHand}, {TEXT("ibeam"), CursorIBeam}};

void SetHAlign(Base& control, StringView word) {
  if (const HAlign* const align = FindKeyword(kHAligns, word)) control.SetHorizontalAlign(*align);
}
void SetVAlign(Base& control, StringView word) {
  if (const VAlign* const align = FindKeyword(kVAligns, word)) control.SetVerticalAlign(*align);
}
void SetCursorWord(Base& control, StringView word) {
  if (const CursorType* const type = FindKeyword(kCursors, word)) control.SetCursorType(*type);
}
void SetNameText(Base& control, StringView name) { control.SetName(name); }
void SetNoFocus(Base& control, StringView) { control.SetNoFocus(); }

void SetTheme(Base& control, StringView names) {
  ApplyThemes(names, [self = WeakRef<ControlBase>(&control)](const WCHAR* name, const WCHAR* value) {
    if (ControlBase* const there = self.Get()) there->SetAttribute(name, value);
  });
}

template <int State>
void SetColorOf(Base& control, StringView text) {
  control.SetStateColor(State, text);
}
template <int State>
void SetBorderColorOf(Base& control, StringView text) {
  control.SetStateBorderColor(State, text);
}
template <Base::ImageKind Kind, int State>
void SetImageOf(Base& control, StringView text) {
  control.SetStateImage(Kind, State, text);
}

template <auto Set>
constexpr auto kText = &ApplyAs<Base, ReadText, Set>;
template <auto Set>
constexpr auto kInteger = &ApplyAs<Base, ReadInteger, Set>;
template <auto Set>
constexpr auto kBoolean = &ApplyAs<Base, ReadBoolean, Set>;
template <auto Set>
constexpr auto kSize = &ApplyAs<Base, ReadSize, Set>;
template <auto Set>
constexpr auto kRect = &ApplyAs<Base, ReadRect, Set>;

constexpr Row kAttributes[] = {
    {TEXT("alpha"), kInteger<&Base::SetAlpha>},
    {TEXT("bkcolor"), kText<&Base::SetBkColor>},
    {TEXT("bkimage"), kText<&Base::SetBkImage>},
    {TEXT("bordercolor"), kText<&Base::SetBorderColor>},
    {TEXT("borderround"), kRect<&Base::SetBorderRound>},
    {TEXT("bordersize"), kInteger<&Base::SetBorderSize>},
    {TEXT("cache"), kInteger<&Base::SetCache>},
    {TEXT("cursortype"), kText<&SetCursorWord>},
    {TEXT("dataid"), kText<&Base::SetDataId>},
    {TEXT("disabledbordercolor"), SetBorderColorOf<StateDisabled>},
    {TEXT("disabledcolor"), SetColorOf<StateDisabled>},
    {TEXT("disabledimage"), SetImageOf<Base::BackImages, StateDisabled>},
    {TEXT("enabled"), kBoolean<&Base::SetEnabled>},
    {TEXT("fadevisible"), kBoolean<&Base::SetFadeVisible>},
    {TEXT("float"), kInteger<&Base::SetFloat>},
    {TEXT("foredisabledimage"), SetImageOf<Base::ForeImages, StateDisabled>},
    {TEXT("forehotimage"), SetImageOf<Base::ForeImages, StateHot>},
    {TEXT("forenormalimage"), SetImageOf<Base::ForeImages, StateNormal>},
    {TEXT("forepushedimage"), SetImageOf<Base::ForeImages, StatePushed>},
    {TEXT("halign"), SetHAlign},
    {TEXT("height"), kSize<&Base::SetFixedHeight>},
    {TEXT("hotbordercolor"), SetBorderColorOf<StateHot>},
    {TEXT("hotcolor"), SetColorOf<StateHot>},
    {TEXT("hotimage"), SetImageOf<Base::BackImages, StateHot>},
    {TEXT("keyboard"), kBoolean<&Base::SetKeyboardEnabled>},
    {TEXT("margin"), kRect<&Base::SetMargin>},
    {TEXT("maxheight"), kSize<&Base::SetMaxHeight>},
    {TEXT("maxwidth"), kSize<&Base::SetMaxWidth>},
    {TEXT("minheight"), kInteger<&Base::SetMinHeight>},
    {TEXT("minwidth"), kInteger<&Base::SetMinWidth>},
    {TEXT("mouse"), kBoolean<&Base::SetMouseEnabled>},
    {TEXT("name"), SetNameText},
    {TEXT("nofocus"), SetNoFocus},
    {TEXT("normalbordercolor"), SetBorderColorOf<StateNormal>},
    {TEXT("normalcolor"), SetColorOf<StateNormal>},
    {TEXT("normalimage"), SetImageOf<Base::BackImages, StateNormal>},
    {TEXT("pushedbordercolor"), SetBorderColorOf<StatePushed>},
    {TEXT("pushedcolor"), SetColorOf<StatePushed>},
    {TEXT("pushedimage"), SetImageOf<Base::BackImages, StatePushed>},
    {TEXT("receivepointer"), kBoolean<&Base::SetReceivePointer>},
    {TEXT("renderoffset"), &ApplyAs<Base, ReadPoint, &Base::SetRenderOffset>},
    {TEXT("state"), kInteger<&Base::SetState>},
    {TEXT("theme"), SetTheme},
    {TEXT("tooltiptext"), kText<&Base::SetToolTipText>},
    {TEXT("tooltiptextid"), kText<&Base::SetToolTipTextId>},
    {TEXT("valign"), SetVAlign},
    {TEXT("visible"), kBoolean<&Base::SetVisible>},
    {TEXT("width"), kSize<&Base::SetFixedWidth>},
};
static_assert(SortedAndUnique(kAttributes));

}  // namespace

void ControlBase::SetAttribute(const WCHAR* name, const WCHAR* value) {
  ApplyAttribute(kAttributes, *this, TextOf(name), TextOf(value));
}

}  // namespace lumo
