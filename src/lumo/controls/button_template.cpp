#include "lumo/controls/button_template.h"

#include "lumo/core/window.h"

namespace lumo {

ButtonReaction ReactAsButton(ControlBase& button, _Msg& msg) {
  if (msg.type == EventKeyDown && button.IsKeyboardEnabled() && (msg.key == VK_SPACE || msg.key == VK_RETURN)) {
    button.Activate();
    return ButtonReaction::Consumed;
  }
  // Also of a disabled button.
  if (msg.type == InternalContextMenu) {
    if (Window* const window = button.GetWindow()) window->SendNotify(&button, EventMenu, msg.wParam, msg.lParam);
    return ButtonReaction::Consumed;
  }
  return ButtonReaction::Inherited;
}

bool SendClick(ControlBase& button) {
  if (!button.IsActive()) return false;
  const WeakRef<ControlBase> self(&button);
  if (Window* const window = button.GetWindow()) window->SendNotify(&button, EventClick, 0, 0);
  return static_cast<bool>(self);
}

}  // namespace lumo
