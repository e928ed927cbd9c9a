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

template <ValueKind Kind, auto Set>
constexpr AttributeValue<Base> kAs = kValueAs<Base, Kind, Set>;
template <auto Set>
constexpr auto kInteger = kAs<ValueKind::Integer, Set>;
template <auto Set>
constexpr auto kBoolean = kAs<ValueKind::Boolean, Set>;
template <auto Set>
constexpr auto kSize = kAs<ValueKind::Size, Set>;
template <auto Set>
constexpr auto kRect = kAs<ValueKind::Rect, Set>;
template <int State>
constexpr auto kColor = kAs<ValueKind::Color, &SetColorOf<State>>;
template <int State>
constexpr auto kBorderColor = kAs<ValueKind::Color, &SetBorderColorOf<State>>;
template <Base::ImageKind Kind, int State>
constexpr auto kImage = kAs<ValueKind::Image, &SetImageOf<Kind, State>>;

constexpr Row kAttributes[] = {
    {TEXT("alpha"), kInteger<&Base::SetAlpha>},
    {TEXT("bkcolor"), kAs<ValueKind::Color, &Base::SetBkColor>},
    {TEXT("bkimage"), kAs<ValueKind::Image, &Base::SetBkImage>},
    {TEXT("bordercolor"), kAs<ValueKind::ColorName, &Base::SetBorderColor>},
    {TEXT("borderround"), kRect<&Base::SetBorderRound>},
    {TEXT("bordersize"), kInteger<&Base::SetBorderSize>},
    {TEXT("cache"), kInteger<&Base::SetCache>},
    {TEXT("cursortype"), kAs<ValueKind::Cursor, &SetCursorWord>},
    {TEXT("dataid"), kAs<ValueKind::Text, &Base::SetDataId>},
    {TEXT("disabledbordercolor"), kBorderColor<StateDisabled>},
    {TEXT("disabledcolor"), kColor<StateDisabled>},
    {TEXT("disabledimage"), kImage<Base::BackImages, StateDisabled>},
    {TEXT("enabled"), kBoolean<&Base::SetEnabled>},
    {TEXT("fadevisible"), kBoolean<&Base::SetFadeVisible>},
    {TEXT("float"), kInteger<&Base::SetFloat>},
    {TEXT("foredisabledimage"), kImage<Base::ForeImages, StateDisabled>},
    {TEXT("forehotimage"), kImage<Base::ForeImages, StateHot>},
    {TEXT("forenormalimage"), kImage<Base::ForeImages, StateNormal>},
    {TEXT("forepushedimage"), kImage<Base::ForeImages, StatePushed>},
    {TEXT("halign"), kAs<ValueKind::HAlign, &SetHAlign>},
    {TEXT("height"), kSize<&Base::SetFixedHeight>},
    {TEXT("hotbordercolor"), kBorderColor<StateHot>},
    {TEXT("hotcolor"), kColor<StateHot>},
    {TEXT("hotimage"), kImage<Base::BackImages, StateHot>},
    {TEXT("keyboard"), kBoolean<&Base::SetKeyboardEnabled>},
    {TEXT("margin"), kRect<&Base::SetMargin>},
    {TEXT("maxheight"), kSize<&Base::SetMaxHeight>},
    {TEXT("maxwidth"), kSize<&Base::SetMaxWidth>},
    {TEXT("minheight"), kAs<ValueKind::Length, &Base::SetMinHeight>},
    {TEXT("minwidth"), kAs<ValueKind::Length, &Base::SetMinWidth>},
    {TEXT("mouse"), kBoolean<&Base::SetMouseEnabled>},
    {TEXT("name"), kAs<ValueKind::Name, &SetNameText>},
    {TEXT("nofocus"), kAs<ValueKind::Presence, &SetNoFocus>},
    {TEXT("normalbordercolor"), kBorderColor<StateNormal>},
    {TEXT("normalcolor"), kColor<StateNormal>},
    {TEXT("normalimage"), kImage<Base::BackImages, StateNormal>},
    {TEXT("pushedbordercolor"), kBorderColor<StatePushed>},
    {TEXT("pushedcolor"), kColor<StatePushed>},
    {TEXT("pushedimage"), kImage<Base::BackImages, StatePushed>},
    {TEXT("receivepointer"), kBoolean<&Base::SetReceivePointer>},
    {TEXT("renderoffset"), kAs<ValueKind::Point, &Base::SetRenderOffset>},
    {TEXT("state"), kInteger<&Base::SetState>},
    {TEXT("theme"), kAs<ValueKind::Themes, &SetTheme>},
    {TEXT("tooltiptext"), kAs<ValueKind::Text, &Base::SetToolTipText>},
    {TEXT("tooltiptextid"), kAs<ValueKind::StringKey, &Base::SetToolTipTextId>},
    {TEXT("valign"), kAs<ValueKind::VAlign, &SetVAlign>},
    {TEXT("visible"), kBoolean<&Base::SetVisible>},
    {TEXT("width"), kSize<&Base::SetFixedWidth>},
};
static_assert(SortedAndUnique(kAttributes));

}  // namespace

bool ControlBase::SetAttribute(const WCHAR* name, const WCHAR* value) {
  return ApplyAttribute(kAttributes, *this, TextOf(name), TextOf(value));
}

void ControlBase::ListAttributes(AttributeInfos* infos) { ListRows(kAttributes, infos); }

std::vector<StringView> ControlBase::WordsOf(ValueKind kind) {
  if (kind == ValueKind::HAlign) return WordsIn(kHAligns);
  if (kind == ValueKind::VAlign) return WordsIn(kVAligns);
  return kind == ValueKind::Cursor ? WordsIn(kCursors) : std::vector<StringView>();
}

}  // namespace lumo
