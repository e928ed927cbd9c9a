#include "lumo/core/shadow_box.h"

#include "lumo/core/window_attributes.h"

namespace lumo {

ShadowBox::ShadowBox(const WindowAttributes& attributes, ControlBase* content, Window* window)
    : corners_(attributes.shadowcorner), image_(attributes.shadowimage) {
  SetOwningWindow(window);
  SetFixedWidth(content->Sizes().width == SizeAuto ? SizeAuto : SizeStretch);
  SetFixedHeight(content->Sizes().height == SizeAuto ? SizeAuto : SizeStretch);
  SetBkImage(image_);
  GetLayout().SetPadding(corners_);
  Add(content);
}

void ShadowBox::SetShown(bool shown) {
  if (shown == shown_) return;
  shown_ = shown;
  SetBkImage(shown ? StringView(image_) : StringView());
  GetLayout().SetPadding(shown ? corners_ : RECT{});
}

}  // namespace lumo
