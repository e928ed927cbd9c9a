#include "lumo/controls/control_text.h"

#include "lumo/controls/attribute_table.h"
#include "lumo/controls/control_base.h"
#include "lumo/controls/layout_math.h"
#include "lumo/core/global_resources.h"
#include "lumo/core/resource_source.h"
#include "lumo/core/window.h"

#include <algorithm>

namespace lumo {
namespace {

using Row = AttributeRow<ControlText>;

template <int State>
void SetColorOf(ControlText& text, StringView color) {
  text.SetTextColor(State, color);
}
template <ValueKind Kind, auto Set>
constexpr AttributeValue<ControlText> kAs = kValueAs<ControlText, Kind, Set>;
template <auto Set>
constexpr auto kBoolean = kAs<ValueKind::Boolean, Set>;
template <int State>
constexpr auto kColor = kAs<ValueKind::ColorName, &SetColorOf<State>>;

constexpr Row kAttributes[] = {
    {TEXT("align"), kAs<ValueKind::AlignWords, &ControlText::SetAlign>},
    {TEXT("autotooltip"), kBoolean<&ControlText::SetAutoToolTip>},
    {TEXT("disabledtextcolor"), kColor<StateDisabled>},
    {TEXT("endellipsis"), kBoolean<&ControlText::SetEndEllipsis>},
    {TEXT("font"), kAs<ValueKind::FontId, &ControlText::SetFont>},
    {TEXT("gditext"), kBoolean<&ControlText::SetGdiText>},
    {TEXT("hottextcolor"), kColor<StateHot>},
    {TEXT("linelimit"), kBoolean<&ControlText::SetLineLimit>},
    {TEXT("normaltextcolor"), kColor<StateNormal>},
    {TEXT("pushedtextcolor"), kColor<StatePushed>},
    {TEXT("singleline"), kBoolean<&ControlText::SetSingleLine>},
    {TEXT("text"), kAs<ValueKind::Text, &ControlText::SetText>},
    {TEXT("textid"), kAs<ValueKind::StringKey, &ControlText::SetTextId>},
    {TEXT("textpadding"), kAs<ValueKind::Rect, &ControlText::SetTextPadding>},
};
static_assert(SortedAndUnique(kAttributes));

}  // namespace

ControlText::ControlText() = default;
ControlText::~ControlText() = default;

bool ControlText::SetAttribute(const WCHAR* name, const WCHAR* value) {
  return ApplyAttribute(kAttributes, *this, TextOf(name), TextOf(value));
}

void ControlText::ListAttributes(AttributeInfos* infos) { ListRows(kAttributes, infos); }

String ControlText::GetText() const {
  return text_.empty() && !textId_.empty() ? Resources().GetString(textId_) : text_;
}

void ControlText::SetText(StringView text) {
  if (text_ == text) return;
  text_ = text;
  if (owner_->DependsOnContent()) owner_->ArrangeAncestor();
  owner_->Invalidate();
  UpdateToolTip();
}

void ControlText::SetTextId(StringView id) {
  if (textId_ == id) return;
  textId_ = id;
  owner_->RelayoutOrInvalidate();
}

void ControlText::SetFont(StringView id) {
  font_ = id;
  owner_->Invalidate();
}

void ControlText::SetEndEllipsis(bool on) { style_ = on ? style_ | DT_END_ELLIPSIS : style_ & ~UINT{DT_END_ELLIPSIS}; }

void ControlText::SetSingleLine(bool on) {
  if (singleLine_ == on) return;
  singleLine_ = on;
  owner_->Invalidate();
}

void ControlText::SetLineLimit(bool on) {
  if (lineLimit_ == on) return;
  lineLimit_ = on;
  owner_->Invalidate();
}

void ControlText::SetGdiText(bool on) {
  if (gdiText_ == on) return;
  gdiText_ = on;
  owner_->Invalidate();
}

void ControlText::SetTextPadding(const RECT& design) {
  padding_ = ScaleRect(design, owner_->Scale());
  owner_->RelayoutOrInvalidate();
}

void ControlText::SetTextColor(int state, StringView color) {
  colors_.At(state) = color;
  owner_->Invalidate();
}

void ControlText::SetAutoToolTip(bool on) {
  autoToolTip_ = on;
  UpdateToolTip();
}

TextLook ControlText::Look() const {
  TextLook look;
  look.font = font_;
  look.style = UsedStyle();
  look.scale = owner_->GetWindow() ? owner_->GetWindow()->ScalePercent() : 100;
  look.line_limit = lineLimit_;
  look.gdi = gdiText_;
  return look;
}

RECT ControlText::TextRect() const { return Shrink(owner_->Position(), padding_); }

void ControlText::Paint(IRender* render) const {
  const String text = GetText();
  if (text.empty()) return;
  const String* const color = colors_.Shown(owner_->State());
  TextLook look = Look();
  look.color = color ? GetColor(*color) : 0;
  render->DrawText(TextRect(), text, look);
}

void ControlText::PaintSelected(IRender* render, StringView selected_color) const {
  const String text = GetText();
  if (text.empty()) return;
  const bool enabled = owner_->IsEnabled();
  const String* const unselected = colors_.Shown(enabled ? StateNormal : StateDisabled);
  TextLook look = Look();
  look.style = style_;
  look.line_limit = look.gdi = false;
  if (enabled && !selected_color.empty()) {
    look.color = GetColor(selected_color);
  } else {
    look.color = unselected ? GetColor(*unselected) : 0;
  }
  render->DrawText(TextRect(), text, look);
}

int ControlText::WidthLimit() const { return std::max<LONG>(owner_->ScaledWidth(), 0); }

SIZE ControlText::MeasureAt(StringView text, int width_limit) const {
  std::unique_ptr<IRender> own;
  Window* const window = owner_->GetWindow();
  if (!window) own = MakeRender();
  const RECT box = (window ? window->Render() : own.get())->MeasureText(text, Look(), width_limit);
  return {ToLong(WideWidth(box)), ToLong(WideHeight(box))};
}

SIZE ControlText::Measure(SIZE available) const {
  const String text = GetText();
  if (text.empty()) return {};
  const SizeRules& sizes = owner_->Sizes();
  const bool auto_width = owner_->ScaledWidth() == SizeAuto, auto_height = sizes.height == SizeAuto;
  const LONGLONG beside = LONGLONG{padding_.left} + padding_.right, above = LONGLONG{padding_.top} + padding_.bottom;
  SIZE size = MeasureAt(text, WidthLimit());
  if (!auto_height) return {auto_width ? ToLong(beside + size.cx) : 0, 0};
  if (!singleLine_ && auto_width && sizes.maxWidth == SizeStretch) {
    owner_->SetNeedsMeasure(true);
    const LONG limit = std::max<LONG>(ToLong(available.cx - beside), 0);
    if (size.cx > limit) size = {limit, MeasureAt(text, limit).cy};
  }
  return {ToLong(beside + size.cx), ToLong(above + size.cy)};
}

bool ControlText::Fits() const {
  const SIZE size = MeasureAt(GetText(), WidthLimit());
  const RECT room = TextRect();
  return size.cx <= WideWidth(room) && size.cy <= WideHeight(room);
}

void ControlText::UpdateToolTip() {
  if (!autoToolTip_) return;
  if (savedToolTip_.empty()) savedToolTip_ = owner_->GetToolTip();
  const bool hidden = GetText().empty() || Fits();
  owner_->SetToolTipText(hidden ? StringView() : StringView(savedToolTip_));
}

ToolTipUpdate::ToolTipUpdate(ControlText& text, ControlBase& control)
    : text_(text), control_(text.HasAutoToolTip() ? &control : nullptr) {}

ToolTipUpdate::~ToolTipUpdate() {
  if (control_) text_.UpdateToolTip();
}

}  // namespace lumo
