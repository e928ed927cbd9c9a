// Moving and sizing a window with the mouse or the arrow keys: a message loop of its own.
#pragma once

#include <windows.h>

namespace winhost {

// `part` is HTCAPTION or one of the borders (HTLEFT … HTBOTTOMRIGHT). Returns when the button is released, Return or
// Escape is pressed (Escape takes the window back), the capture is lost or the thread is to quit.
void RunMoveLoop(HWND window, int part);

}  // namespace winhost
