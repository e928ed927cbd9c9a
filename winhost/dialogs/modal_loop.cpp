#include "winhost/dialogs/modal_loop.h"

#include "winhost/kernel/waitable.h"
#include "winhost/window/thread_queue.h"

namespace winhost {

bool RunModalLoop(const std::function<bool()>& ended, const std::function<bool(const MSG&)>& taken) {
  while (!ended()) {
    MSG message{};
    const BOOL got = GetMessageW(&message, nullptr, 0, 0);
    if (got == 0) {
      PostQuitMessage(static_cast<int>(message.wParam));
      return false;
    }
    if (got < 0) return false;
    if (taken(message)) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return true;
}

// Straight into the queue: a plan to fail the program's own posted messages is not meant for this one.
void TurnModalLoop() {
  const auto queue = ThreadQueue::Mine();
  std::scoped_lock lock(WaitLock());
  queue->Post({nullptr, WM_NULL, 0, 0, 0, {}});
}

}  // namespace winhost
