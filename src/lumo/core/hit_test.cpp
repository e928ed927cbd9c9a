#include "lumo/core/hit_test.h"

#include "lumo/controls/control_base.h"

namespace lumo {

int HitSizingBorder(const FrameShape& frame, POINT point) {
  if (frame.maximised) return HTNOWHERE;
  const RECT& client = frame.client;
  const RECT& border = frame.sizebox;
  if (point.y < client.top) return HTCLIENT;
  const bool left = border.left > 0 && point.x < client.left + border.left;
  const bool right = border.right > 0 && point.x >= client.right - border.right;
  if (point.y < client.top + border.top) return left ? HTTOPLEFT : right ? HTTOPRIGHT : HTTOP;
  if (border.bottom > 0 && point.y >= client.bottom - border.bottom) {
    return left ? HTBOTTOMLEFT : right ? HTBOTTOMRIGHT : HTBOTTOM;
  }
  return left ? HTLEFT : right ? HTRIGHT : HTNOWHERE;
}

bool IsInCaption(const FrameShape& frame, POINT point) {
  const RECT& client = frame.client;
  const RECT& caption = frame.caption;
  return point.x >= client.left + caption.left && point.x < client.right - caption.right &&
         point.y >= client.top + caption.top && point.y < client.top + caption.bottom;
}

bool TakesPress(const ControlBase* control) {
  if (!control) return true;
  switch (control->Class()) {
    case ControlClass::Button:
    case ControlClass::ButtonBox:
    case ControlClass::RichEdit:
    case ControlClass::Combo:
    case ControlClass::ListContainerElement:
      return true;
    default:
      return false;
  }
}

}  // namespace lumo
