// The shadow of a layered window: a container around the tree, drawn inside the window.
#pragma once

#include "lumo/controls/box_t.h"

namespace lumo {

struct WindowAttributes;

// Takes `content` over. Sizes itself as the content does, so the layout's rules for the window hold.
class ShadowBox final : public BoxT<ShadowBox, IBox, BoxBase> {
 public:
  static constexpr ControlClass kClass = ControlClass::ShadowBox;

  ShadowBox(const WindowAttributes& attributes, ControlBase* content, Window* window);

  // A maximised window has no room for a shadow: its margins are then zero.
  void SetShown(bool shown);

 private:
  RECT corners_;  // design pixels
  String image_;
  bool shown_ = true;
};

}  // namespace lumo
