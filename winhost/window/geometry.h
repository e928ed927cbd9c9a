// Where windows lie.
#pragma once

#include <windows.h>

#include "winhost/window/window_table.h"

namespace winhost {

// The window's rectangle and its client area, in screen coordinates.
RECT FrameOnScreen(const WindowInfo& info);
RECT ClientOnScreen(const WindowInfo& info);
// The top-level window that this one stands in; itself, if it is none's child.
WindowInfo TopOf(const WindowInfo& info);

}  // namespace winhost
