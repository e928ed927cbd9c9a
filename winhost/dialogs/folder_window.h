// The folder picker's window: its parts, their places, what they do together.
#pragma once

#include <optional>

#include "winhost/dialogs/edit_window.h"
#include "winhost/dialogs/folder_dialog.h"
#include "winhost/dialogs/folder_list.h"
#include "winhost/dialogs/notice_line.h"
#include "winhost/dialogs/push_button.h"

namespace winhost {

class FolderWindow final : public WindowPart {
 public:
  explicit FolderWindow(const FolderQuestion& question) : question_(question) {}
  ~FolderWindow();

  // Makes it, hidden, over its owner. False with the last error.
  bool Make();
  // Shows it with the keys on the line.
  void Present();
  // Keys that are the dialog's and not its parts'.
  bool TakeKey(const MSG& message);

  bool Ended() const { return !window() || ended_; }
  // What was picked; none while nothing is.
  const std::optional<std::u16string>& Answer() const { return answer_; }

 private:
  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;
  void Activated(bool active);
  void Command(int id, int code);
  void Accept();
  void End();
  void GoTo(const std::u16string& folder, const std::u16string& chosen);
  void GoUp();
  void Open();
  void LineChanged();
  void FocusNext(bool backwards);
  bool PressReturn();

  bool MakeParts();
  void Center();
  void LayOut();
  void Rescale(int dpi, const RECT* place);
  LRESULT HitTest(POINT screen) const;
  void HoverCross(bool hot);
  void Paint();
  void PaintTitle(const Painter& painter, const RECT& box) const;
  void PaintWhere(const Painter& painter) const;
  RECT CrossArea() const;
  RECT WhereArea() const;
  int TopOfRows() const;

  const FolderQuestion question_;
  DialogLook look_;
  EditWindow line_{look_};
  FolderList rows_{look_};
  NoticeLine notice_{look_};
  PushButton up_{look_, Glyph::Up};
  PushButton ok_{look_, PushButton::Weight::Main};
  PushButton cancel_{look_, PushButton::Weight::Plain};

  std::u16string where_;  // the folder that is shown; "" is the computer
  std::optional<std::u16string> answer_;
  bool ended_ = false;
  bool cross_hot_ = false;
  bool cross_down_ = false;
  HWND focus_ = nullptr;  // the part that had the keys when another window took over
};

}  // namespace winhost
