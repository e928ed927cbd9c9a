// Placing windows: the one way in which a window moves, changes its size, its place among the others, or shows itself.
#pragma once

#include <windows.h>

#include "winhost/window/window.h"

namespace winhost {

// SetWindowPos for a window of the calling thread, with style bits that change at the same moment.
bool PlaceWindow(const WINDOWPOS& wanted, DWORD clear_style = 0, DWORD set_style = 0);

// What the display did on its own: the window learns of it, the display does not.
void FollowDisplay(HWND window, const RECT& place);

// Asks the window for its client area; `place` as in WindowInfo. From the window's top left corner.
RECT AskClient(HWND window, const RECT& place);
// The limits that WM_GETMINMAXINFO gives, beginning with those of the monitor's work area.
MINMAXINFO AskLimits(HWND window);

// ShowWindow for a window of the calling thread, which was visible or not, as `former_style` says, when that was asked.
void ShowMine(HWND window, int show, DWORD former_style);

}  // namespace winhost
