// A tooltip window: a small box with a text, beside the pointer or where its program says.
#pragma once

#include <commctrl.h>
#include <windows.h>

#include "winhost/gdi/tooltip_tools.h"

namespace winhost {

class TooltipWindow {
 public:
  explicit TooltipWindow(HWND window) : window_(window) {}

  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

 private:
  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam);
  LRESULT HandleTools(UINT message, WPARAM wparam, LPARAM lparam);
  LRESULT HandleLooks(UINT message, WPARAM wparam, LPARAM lparam);

  LRESULT Track(bool on, const TTTOOLINFOW* info);
  void Relay(const MSG& message);
  void ShowFor(const TooltipTool& tool);
  void Hide();
  void Refresh();
  void Paint();
  void SetDelay(WPARAM which, int ms);
  void Notify(UINT code) const;
  // Null for none, or one that was taken away.
  const TooltipTool* Shown() const;
  SIZE Measure(const std::u16string& text) const;
  POINT PlaceFor(const TooltipTool& tool, SIZE size) const;
  RECT TextArea(const RECT& box) const;
  UINT TextFormat() const;

  HWND window_;
  TooltipTools tools_;
  TTTOOLINFOW key_{};  // of the tool that is shown; its hwnd and uId count
  bool shown_ = false;
  bool active_ = true;
  POINT point_{};
  int most_width_ = -1;
  int initial_ms_ = 500;
  int autopop_ms_ = 5000;
  int reshow_ms_ = 100;
  RECT margin_{};
  COLORREF back_ = 0xFFFFFF;
  COLORREF ink_ = 0x575757;
  HFONT font_ = nullptr;
};

}  // namespace winhost
