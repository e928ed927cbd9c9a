// Turning what devices did into messages, when a thread fetches them: only then is it known which part of which window
// it hits, and what the window says to that.
#pragma once

#include "winhost/window/thread_queue.h"

namespace winhost {

// The next message of the queue's input that the filter admits, for the calling thread. Asks windows (WM_NCHITTEST)
// and, with `remove`, tells them (WM_MOUSEACTIVATE, WM_SETCURSOR), so no lock may be held. Input that is for nobody is
// thrown away.
bool TakeInput(ThreadQueue& queue, const MessageFilter& filter, bool remove, MSG* message);

// One step of it for each kind of device: the message that the event is; none when it is for nobody.
std::optional<MSG> MouseMessage(ThreadQueue& queue, const InputEvent& event, bool remove);
std::optional<MSG> KeyMessage(ThreadQueue& queue, const InputEvent& event, bool remove);
std::optional<MSG> TouchMessage(ThreadQueue& queue, const InputEvent& event, bool remove);

}  // namespace winhost
