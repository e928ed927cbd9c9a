// What a point of a window does when it is pressed: sizing border, caption or client. Pure arithmetic; device pixels in
// client coordinates.
#pragma once

#include <windows.h>

namespace lumo {

class ControlBase;

struct FrameShape {
  RECT client;   // the client rectangle less the frame insets
  RECT sizebox;  // scaled: widths of the sizing border's four sides; a side of 0 has none
  RECT caption;  // scaled: left and top insets, right inset from the right edge, bottom measured from the top
  bool maximised;
};

// HTLEFT … HTBOTTOMRIGHT where the sizing border lies, HTCLIENT above it, HTNOWHERE where the border does not decide.
int HitSizingBorder(const FrameShape& frame, POINT point);

bool IsInCaption(const FrameShape& frame, POINT point);

// Whether the control under the point keeps the press to itself; anything else in the caption drags the window. No
// control there counts as one that does.
bool TakesPress(const ControlBase* control);

// The answer to WM_NCHITTEST. `takes_press` is TakesPress of the control under the point, asked only inside the
// caption.
template <class TakesPress>
int HitFrame(const FrameShape& frame, POINT point, TakesPress takes_press) {
  const int border = HitSizingBorder(frame, point);
  if (border != HTNOWHERE) return border;
  return IsInCaption(frame, point) && !takes_press() ? HTCAPTION : HTCLIENT;
}

}  // namespace lumo
