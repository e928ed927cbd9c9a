#include "lumo/controls/progress_bar.h"

#include "lumo/controls/attribute_table.h"
#include "lumo/controls/control_base.h"
#include "lumo/controls/layout_math.h"
#include "lumo/render/render.h"

#include <limits.h>

namespace lumo {
namespace {

template <ValueKind Kind, auto Set>
constexpr AttributeValue<ProgressBar> kAs = kValueAs<ProgressBar, Kind, Set>;

constexpr AttributeRow<ProgressBar> kAttributes[] = {
    {TEXT("hor"), kAs<ValueKind::Boolean, &ProgressBar::SetHorizontal>},
    {TEXT("max"), kAs<ValueKind::Integer, &ProgressBar::SetMax>},
    {TEXT("min"), kAs<ValueKind::Integer, &ProgressBar::SetMin>},
    {TEXT("progresscolor"), kAs<ValueKind::Color, &ProgressBar::SetColor>},
    {TEXT("progressimage"), kAs<ValueKind::Image, &ProgressBar::SetImage>},
    {TEXT("value"), kAs<ValueKind::Integer, &ProgressBar::SetWholeValue>},
};
static_assert(SortedAndUnique(kAttributes));

}  // namespace

ProgressBar::ProgressBar() = default;
ProgressBar::~ProgressBar() = default;

bool ProgressBar::SetAttribute(const WCHAR* name, const WCHAR* value) {
  return ApplyAttribute(kAttributes, *this, TextOf(name), TextOf(value));
}

void ProgressBar::ListAttributes(AttributeInfos* infos) { ListRows(kAttributes, infos); }

void ProgressBar::SetHorizontal(bool horizontal) {
  if (horizontal == horizontal_) return;
  horizontal_ = horizontal;
  owner_->Invalidate();
}

void ProgressBar::SetMin(int min) {
  range_.min = min;
  owner_->Invalidate();
}

void ProgressBar::SetMax(int max) {
  range_.max = max;
  owner_->Invalidate();
}

void ProgressBar::SetMaxFrom(double max) {
  SetMax(max >= INT_MAX ? INT_MAX : max <= INT_MIN ? INT_MIN : max == max ? static_cast<int>(max) : 0);
}

void ProgressBar::SetValue(double value) {
  range_.value = value;
  owner_->Invalidate();
}

void ProgressBar::SetImage(StringView text) {
  image_.Assign(text);
  owner_->Invalidate();
}

void ProgressBar::SetColor(StringView text) {
  if (color_.text == text) return;
  color_.Assign(text);
  owner_->Invalidate();
}

RECT ProgressBar::SettleFill() {
  range_.Settle();
  const RECT& position = owner_->Position();
  const RECT fill = ProgressFill(range_, ToLong(WideWidth(position)), ToLong(WideHeight(position)), horizontal_);
  return Shift(fill, position.left, position.top);
}

void ProgressBar::Paint(IRender* render) {
  const RECT fill = SettleFill();
  if (IsRectEmpty(&fill)) return;
  if (!color_.IsEmpty()) owner_->FillWhole(render, color_, fill);
  if (image_.IsSet()) owner_->PaintImage(render, image_, &fill);
}

}  // namespace lumo
