// The active window of a thread, the foreground window of the machine, and the keyboard focus.
#pragma once

#include <windows.h>

namespace winhost {

// Makes it the machine's foreground window. Windows of other threads hear of it in their own time: waiting for another
// program would hang with it. False with the last error for no window.
bool Activate(HWND window, bool by_click = false);
// Null: nobody is active. For a thread that looks at its own windows.
void ActivateMine(HWND window, bool by_click);
// After a window has gone or is hidden: its owner, or the next one of this thread, takes its place.
void ActivateAfter(HWND gone);
// To the front, with the windows that it owns before it.
void BringForward(HWND window);

}  // namespace winhost
