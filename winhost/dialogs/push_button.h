// A button, of class "Button": a text, or a glyph alone. It tells its parent BN_CLICKED, and answers BM_CLICK.
#pragma once

#include <optional>

#include "winhost/dialogs/dialog_look.h"
#include "winhost/dialogs/glyphs.h"
#include "winhost/dialogs/window_part.h"

namespace winhost {

class PushButton final : public WindowPart {
 public:
  enum class Weight { Plain, Main };  // the main one is what Return presses
  PushButton(const DialogLook& look, Weight weight) : look_(look), weight_(weight) {}
  PushButton(const DialogLook& look, Glyph glyph) : look_(look), glyph_(glyph) {}

  bool Make(HWND parent, int id, const std::u16string& text);

 private:
  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;
  void Press(bool down);
  void Release(POINT client);
  void Hover(bool hot);
  void Click();
  void Paint();
  void PaintFace(const Painter& painter, const RECT& box) const;

  const DialogLook& look_;
  Weight weight_ = Weight::Plain;
  std::optional<Glyph> glyph_;
  bool hot_ = false;
  bool down_ = false;
};

}  // namespace winhost
