// A line to type into, of class "Edit". It answers WM_SETTEXT, WM_GETTEXT, EM_SETSEL and EM_GETSEL, tells its parent
// EN_CHANGE, and is used by mouse and keys as ever, but that there is no clipboard and that its caret stands still: a
// timer would move a standing clock on.
#pragma once

#include "winhost/dialogs/dialog_look.h"
#include "winhost/dialogs/edit_text.h"
#include "winhost/dialogs/window_part.h"

namespace winhost {

class EditWindow final : public WindowPart {
 public:
  explicit EditWindow(const DialogLook& look) : look_(look) {}

  bool Make(HWND parent, int id);
  const std::u16string& text() const { return edit_.text(); }
  // Replaces the text without telling the parent, and marks all of it.
  void Show(const std::u16string& text);

 private:
  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;
  LRESULT TextMessage(UINT message, WPARAM wparam, LPARAM lparam);
  bool Press(WPARAM key);
  void Touch(UINT message, POINT client);
  void Changed();
  void Moved();
  void Select(WPARAM first, LPARAM last);
  void Paint();
  void PaintText(const Painter& painter, const RECT& area) const;
  RECT TextArea() const;
  std::size_t PlaceAt(int x) const;

  const DialogLook& look_;
  EditText edit_;
  int scroll_ = 0;  // pixels of the text that lie to the left of the window
};

}  // namespace winhost
