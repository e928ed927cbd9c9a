// The message loop of a modal dialog.
#pragma once

#include <windows.h>

#include <functional>

namespace winhost {

// Keeps a window from being used while a dialog over it is up, and lets it be used again afterwards; a window that was
// disabled before stays so. Null is nothing.
class DisabledOwner {
 public:
  explicit DisabledOwner(HWND owner) : owner_(owner && !EnableWindow(owner, FALSE) ? owner : nullptr) {}
  ~DisabledOwner() {
    if (owner_) EnableWindow(owner_, TRUE);
  }
  DisabledOwner(const DisabledOwner&) = delete;
  DisabledOwner& operator=(const DisabledOwner&) = delete;

 private:
  HWND owner_;
};

// Fetches and dispatches the messages of all windows of the thread until `ended` says yes, which is asked after each;
// `taken` may take one for itself first. False when WM_QUIT ended it, which is then posted again for the loop outside.
bool RunModalLoop(const std::function<bool()>& ended, const std::function<bool(const MSG&)>& taken);
// Makes this thread's loop ask `ended` again: for an answer that came as a sent message, on which no loop turns.
void TurnModalLoop();

}  // namespace winhost
