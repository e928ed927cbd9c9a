// One window on the X display.
#pragma once

#include <windows.h>

#include <string>

#include "winhost/window/picture.h"
#include "winhost/window/rect_set.h"
#include "winhost/window/window_table.h"
#include "winhost/x11/connection.h"

namespace winhost {

class X11Window {
 public:
  X11Window(XConnection& connection, const WindowInfo& info, xcb_window_t owner);
  ~X11Window();
  X11Window(const X11Window&) = delete;
  X11Window& operator=(const X11Window&) = delete;

  // Makes it what the window is now: title, place, shape, shown, minimised.
  void Follow(const WindowInfo& info, const std::optional<RectSet>& shape);
  // Sends this part of the picture, which is the whole window's.
  void Show(const Picture& picture, const RECT& part);
  void Focus();
  void SetIcon(HICON icon);

  xcb_window_t id() const { return id_; }
  bool managed() const { return managed_; }
  bool iconic() const { return iconic_; }
  // What the display did by itself: known, so that Follow does not do it again.
  void NotePlace(const RECT& place) { place_ = place; }
  void NoteIconic(bool iconic) { iconic_ = iconic; }
  // Whether an event was sent before the server knew of the last place that we asked for.
  bool Outdated(std::uint16_t sequence) const { return static_cast<std::int16_t>(sequence - placed_at_) < 0; }

 private:
  void SetHints(const WindowInfo& info, xcb_window_t owner);
  void SetTitle(const std::u16string& title);
  void SetPlace(const RECT& place);
  void SetShape(const std::optional<RectSet>& shape);
  void ShapeByAlpha(const Picture& picture);
  void Iconify();

  XConnection& connection_;
  xcb_window_t id_ = 0;
  xcb_gcontext_t context_ = 0;
  xcb_colormap_t colors_ = 0;
  std::uint8_t depth_ = 0;
  bool managed_ = true;  // the window manager is asked; else it is bypassed
  bool layered_ = false;
  bool mapped_ = false;
  bool iconic_ = false;
  bool shaped_ = false;
  std::uint16_t placed_at_ = 0;
  RECT place_{};
  HICON icon_ = nullptr;
  std::u16string title_;
  std::vector<RECT> shape_;
};

}  // namespace winhost
