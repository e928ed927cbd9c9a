// The list of the folders of a place, of class "FolderList". It tells its parent LBN_SELCHANGE when another row is
// chosen and LBN_DBLCLK when one is to be opened; the wheel, a bar at its side and the keys scroll it, and letters go
// to the next row that begins so.
#pragma once

#include <vector>

#include "winhost/dialogs/dialog_look.h"
#include "winhost/dialogs/folder_places.h"
#include "winhost/dialogs/window_part.h"

namespace winhost {

class FolderList final : public WindowPart {
 public:
  explicit FolderList(const DialogLook& look) : look_(look) {}

  bool Make(HWND parent, int id);
  // Replaces the rows; `chosen` is the path of the row that is chosen, if it is there.
  void Show(std::vector<FolderPlace> places, const std::u16string& chosen);
  // Null when no row is chosen. Valid until the rows change.
  const FolderPlace* Chosen() const;

 private:
  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;
  bool Press(WPARAM key);
  void GoTo(char16_t letter);
  void Down(POINT client);
  void Move(POINT client);
  void Hover(int row);
  void Choose(int row);
  void Reveal(int row);
  void ScrollTo(int y);
  void Paint();
  void PaintRow(const Painter& painter, int row, const RECT& area) const;

  int RowHeight() const { return look_.Px(24); }
  int Height() const;
  int Rows() const { return static_cast<int>(places_.size()); }
  int RowAt(POINT client) const;  // -1: none
  RECT RowArea(int row) const;
  RECT Thumb() const;  // empty when all rows fit

  const DialogLook& look_;
  std::vector<FolderPlace> places_;
  int chosen_ = -1;
  int hot_ = -1;
  int top_ = 0;    // pixels of the rows that lie above the window
  int grip_ = -1;  // where the thumb is held, from its top; -1: it is not
};

}  // namespace winhost
