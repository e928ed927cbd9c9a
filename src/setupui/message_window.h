// The message window: an icon, one text, one button.
#pragma once

#include "base/text.h"

namespace vanta {

struct MessageRequest {
  String icon;  // image attribute of "ct_icon"; "" keeps the layout's
  String text;
  String button;
  BYTE modal = 0;
  HWND owner = nullptr;
};

// How a modal message ended; the first two are the codes that its WM_CLOSE carries.
inline constexpr int kMessageConfirmed = 1;
inline constexpr int kMessageClosed = 8;
inline constexpr int kMessageQuit = 0;  // the thread is to end: WM_QUIT has been posted again

// Shows the message. Modal: disables the owner and runs the thread's messages until one of them is WM_CLOSE, for
// whichever window, whose wParam is the result; the owner and everything else may be gone then. Otherwise, and when the
// window cannot be created, 0 at once. UI thread only.
int ShowMessage(const MessageRequest& request);

}  // namespace vanta
