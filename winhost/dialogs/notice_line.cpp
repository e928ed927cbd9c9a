#include "winhost/dialogs/notice_line.h"

namespace winhost {

bool NoticeLine::Make(HWND parent, int id) {
  const Class kClass{u"Static", 0, IDC_ARROW};
  return Create(kClass, 0, WS_CHILD | WS_VISIBLE, u"", {}, parent, id);
}

void NoticeLine::Say(const std::u16string& text) {
  if (text == text_) return;
  text_ = text;
  SetWindowTextW(window(), text.c_str());
  InvalidateRect(window(), nullptr, FALSE);
}

LRESULT NoticeLine::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_PAINT:
      Paint();
      return 0;
    case WM_ERASEBKGND:
      return TRUE;
    case WM_NCHITTEST:
      return HTTRANSPARENT;
    default:
      return Default(message, wparam, lparam);
  }
}

void NoticeLine::Paint() {
  const PaintScope paint(window());
  const Painter painter(look_, paint.context());
  if (!painter) return;
  RECT box{};
  GetClientRect(window(), &box);
  painter.Fill(box, ink::kPaper);
  painter.Text(text_, box, ink::kWarning, DT_LEFT | DT_END_ELLIPSIS);
}

}  // namespace winhost
