// TrackMouseEvent's side of the pointer's way.
#pragma once

#include "winhost/window/thread_queue.h"

namespace winhost {

// The pointer moved over this part (HT…) of the window; called on the queue's thread without a lock. A tracked window
// that it has left gets WM_MOUSELEAVE posted; hovering begins anew after a move.
void PointerMoved(ThreadQueue& queue, HWND window, int part, POINT screen);
// The pointer is over none of the thread's windows.
void PointerLeft(ThreadQueue& queue);

}  // namespace winhost
