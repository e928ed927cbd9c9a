// The shadow of a window that is not layered: a second, layered window around it, which takes no input.
#pragma once

#include "lumo/core/window.h"
#include "lumo/render/image_attribute.h"

namespace lumo {

class ShadowWindow final : public Window {
 public:
  // Takes the settings of `owner` over and lies around it, hidden until the owner shows. Null when the system refuses.
  // It is deleted with its native window, which ends with the owner's at the latest.
  static ShadowWindow* Create(Window& owner);

  // Moves, sizes, shows or hides it as the owner's place and state ask.
  void Follow(const Window& owner);

  LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, bool* handled) override;

 private:
  ShadowWindow(const Window& owner);
  RECT Reach() const;  // beyond the owner, device pixels
  void Draw(SIZE size);

  WindowAttributes settings_;
  ImageAttribute image_;
  SIZE drawn_ = {};
};

}  // namespace lumo
