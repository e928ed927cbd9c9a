// What of the windows is still to be painted.
#pragma once

#include <windows.h>

#include "winhost/window/thread_queue.h"
#include "winhost/window/window.h"

namespace winhost {

// A window of the queue that wants WM_PAINT, of those that the filter admits; null for none. With WaitLock held.
HWND WindowToPaint(const ThreadQueue& queue, const MessageFilter& filter);

// Adds to what a window has to paint; `client` null is all of it. Hidden and minimised windows have nothing to paint.
// With `children` theirs too. False for a window of another process.
bool Invalidate(HWND window, const RECT* client, bool erase, bool children);

// Takes over what is to be painted, clipped to the client area: nothing is left to paint.
struct TakenUpdate {
  RectSet region;
  bool erase = false;
};
TakenUpdate TakeUpdate(Window& window);

}  // namespace winhost
