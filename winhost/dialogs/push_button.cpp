#include "winhost/dialogs/push_button.h"

namespace winhost {
namespace {

struct Face {
  COLORREF fill, edge, text;
};

constexpr Face kPlain{RGB(253, 253, 253), RGB(200, 200, 200), ink::kText};
constexpr Face kPlainHot{ink::kHot, RGB(0, 120, 215), ink::kText};
constexpr Face kPlainDown{ink::kChosen, RGB(0, 84, 153), ink::kText};
constexpr Face kMain{ink::kAccent, ink::kAccent, ink::kPaper};
constexpr Face kMainHot{RGB(26, 117, 197), RGB(26, 117, 197), ink::kPaper};
constexpr Face kMainDown{RGB(0, 84, 158), RGB(0, 84, 158), ink::kPaper};
constexpr Face kDisabled{RGB(245, 245, 245), ink::kLine, RGB(160, 160, 160)};

std::u16string TextOf(HWND window) {
  WCHAR text[64] = {};
  GetWindowTextW(window, text, 64);
  return text;
}

}  // namespace

bool PushButton::Make(HWND parent, int id, const std::u16string& text) {
  const Class kClass{u"Button", 0, IDC_ARROW};
  return Create(kClass, 0, WS_CHILD | WS_VISIBLE | WS_TABSTOP, text.c_str(), {}, parent, id);
}

LRESULT PushButton::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_PAINT:
      Paint();
      return 0;
    case WM_ERASEBKGND:
      return TRUE;
    case WM_LBUTTONDOWN:
      SetFocus(window());
      SetCapture(window());
      Press(true);
      return 0;
    case WM_LBUTTONUP:
      Release(PointOf(lparam));
      return 0;
    case WM_CAPTURECHANGED:
      Press(false);
      return 0;
    case WM_MOUSEMOVE:
      Hover(true);
      return 0;
    case WM_MOUSELEAVE:
      Hover(false);
      return 0;
    case WM_MOUSEWHEEL:
      return SendMessageW(GetParent(window()), message, wparam, lparam);
    case WM_KEYDOWN:
      if (wparam == VK_SPACE) Press(true);
      return 0;
    case WM_KEYUP:
      if (wparam == VK_SPACE && down_) Click();
      return 0;
    case WM_SETFOCUS:
    case WM_ENABLE:
      InvalidateRect(window(), nullptr, FALSE);
      return 0;
    case WM_KILLFOCUS:
      Press(false);
      InvalidateRect(window(), nullptr, FALSE);
      return 0;
    case BM_CLICK:
      if (IsWindowEnabled(window())) Click();
      return 0;
    default:
      return Default(message, wparam, lparam);
  }
}

void PushButton::Press(bool down) {
  if (down_ == down) return;
  down_ = down;
  InvalidateRect(window(), nullptr, FALSE);
}

void PushButton::Release(POINT client) {
  if (!down_) return;
  RECT box{};
  GetClientRect(window(), &box);
  ReleaseCapture();
  if (PtInRect(&box, client)) Click();
}

void PushButton::Hover(bool hot) {
  if (hot_ == hot) return;
  hot_ = hot;
  if (hot) {
    TRACKMOUSEEVENT track{sizeof(TRACKMOUSEEVENT), TME_LEAVE, window(), 0};
    TrackMouseEvent(&track);
  }
  InvalidateRect(window(), nullptr, FALSE);
}

void PushButton::Click() {
  Press(false);
  Notify(BN_CLICKED);
}

void PushButton::Paint() {
  const PaintScope paint(window());
  const Painter painter(look_, paint.context());
  if (!painter) return;
  RECT box{};
  GetClientRect(window(), &box);
  PaintFace(painter, box);
}

void PushButton::PaintFace(const Painter& painter, const RECT& box) const {
  const bool main = weight_ == Weight::Main, enabled = IsWindowEnabled(window()) != FALSE;
  Face face = main ? (down_ ? kMainDown : hot_ ? kMainHot : kMain) : down_ ? kPlainDown : hot_ ? kPlainHot : kPlain;
  if (!enabled) face = kDisabled;
  const bool bare = glyph_ && !hot_ && !down_ && GetFocus() != window();
  painter.Fill(box, bare ? ink::kPaper : face.fill);
  if (!bare) painter.Frame(box, face.edge);
  if (GetFocus() == window()) {
    RECT ring = box;
    InflateRect(&ring, -look_.Px(2), -look_.Px(2));
    painter.Frame(ring, main ? ink::kPaper : ink::kAccent);
  }
  if (!glyph_) {
    painter.Text(TextOf(window()), box, face.text, DT_CENTER);
    return;
  }
  const LONG side = look_.Px(16), left = (box.right - side) / 2, top = (box.bottom - side) / 2;
  DrawGlyph(painter.context(), *glyph_, {left, top, left + side, top + side}, enabled ? ink::kText : face.text);
}

}  // namespace winhost
