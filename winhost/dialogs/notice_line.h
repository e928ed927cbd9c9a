// A line of text that tells the user something, of class "Static"; WM_GETTEXT and the like ask for it.
#pragma once

#include "winhost/dialogs/dialog_look.h"
#include "winhost/dialogs/window_part.h"

namespace winhost {

class NoticeLine final : public WindowPart {
 public:
  explicit NoticeLine(const DialogLook& look) : look_(look) {}

  bool Make(HWND parent, int id);
  void Say(const std::u16string& text);

 private:
  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;
  void Paint();

  const DialogLook& look_;
  std::u16string text_;
};

}  // namespace winhost
