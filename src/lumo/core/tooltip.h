// The one tooltip window of a Window: a tracking tip at the pointer for the control that is hovered.
#pragma once

#include "lumo/core/types.h"

#include <commctrl.h>

namespace lumo {

class ControlBase;

class Tooltip {
 public:
  // Nothing is shown, and nothing fails, when the system refuses the window.
  explicit Tooltip(HWND owner);
  ~Tooltip();
  Tooltip(const Tooltip&) = delete;
  Tooltip& operator=(const Tooltip&) = delete;

  // How long the pointer rests before a tip comes, milliseconds.
  DWORD InitialDelay() const;

  // Shows the control's tip at the point (client coordinates, device pixels); a control without a text hides the tip.
  void Show(const ControlBase& control, POINT point, int scale);
  void Hide();
  // The control is being destroyed.
  void Forget(const ControlBase* control);

 private:
  TOOLINFOW Tool(String* text, const RECT& place) const;

  HWND owner_;
  HWND window_;
  const ControlBase* shown_ = nullptr;  // compared only
};

}  // namespace lumo
