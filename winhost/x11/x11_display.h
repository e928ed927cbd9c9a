// The windows of this process on a real X display, a top-level window there for each top-level window here.
//
// A window manager is welcome and not needed: windows ask it for no decoration, follow where it puts them, and minimise
// through it (ICCCM); without one they place themselves. WS_EX_TOOLWINDOW and tooltips bypass it. Layered windows use
// their alpha where a compositor runs and a shape of whole pixels elsewhere; windows that are mere shadows
// (WS_EX_TRANSPARENT) are shown only where one runs. Keys give the characters of the display's keyboard.
// Simplifies: one screen of a true-colour display with 32-bit pixels; no input method; no drag and drop.
#pragma once

#include <memory>

#include "winhost/window/display.h"

namespace winhost {

// Null, with a line on standard error, when DISPLAY names none that can be used.
std::unique_ptr<Display> OpenX11Display();

}  // namespace winhost
