// Input on its way in: from a test, from the display, from another process of the machine. Any thread; nothing here
// waits. What becomes of it is decided when the window's thread fetches its messages.
#pragma once

#include <windows.h>

#include "winhost/window/input_event.h"

namespace winhost {

// The top-level window that is seen at this point of the screen; null for none. Windows through which the pointer
// passes are passed over: WS_EX_TRANSPARENT ones, places outside a window's shape, transparent pixels of a layered one.
HWND TopWindowAt(POINT screen);

// `window` null: the one at the point. A window that has the capture gets it all.
void InjectMouse(HWND window, UINT message, POINT screen, int data);
// The pointer is over no window of this process any more.
void InjectPointerGone();
// Goes to the foreground window's thread. `character` 0: what a US keyboard would give.
void InjectKey(int key, bool down, char16_t character);
void InjectTouch(UINT message, int contact, POINT screen, ContactKind kind);

}  // namespace winhost
