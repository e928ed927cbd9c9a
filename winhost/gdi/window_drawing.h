// The drawing library's side of windows.
#pragma once

#include <windows.h>

#include "winhost/window/window.h"

namespace winhost {

// Fills in what windows ask of drawing; always true, for the sake of a static initialiser in a file that every drawing
// program links.
bool RegisterWindowDrawing();

// Tells the display that this part of the window's own picture is new; for a child, of the window that it stands in.
void Present(const Window& window, const RECT& part);

// The class "tooltips_class32".
void RegisterTooltipClass();

}  // namespace winhost
