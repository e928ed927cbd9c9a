#include "winhost/dialogs/edit_window.h"

#include <algorithm>

#include "winhost/window/titles.h"

namespace winhost {
namespace {

constexpr int kPad = 7;  // from the border to the text, at 96 dpi

bool Held(int key) { return GetKeyState(key) < 0; }

}  // namespace

bool EditWindow::Make(HWND parent, int id) {
  const Class kClass{u"Edit", CS_DBLCLKS, IDC_IBEAM};
  return Create(kClass, 0, WS_CHILD | WS_VISIBLE | WS_TABSTOP, u"", {}, parent, id);
}

LRESULT EditWindow::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_PAINT:
      Paint();
      return 0;
    case WM_ERASEBKGND:
      return TRUE;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      InvalidateRect(window(), nullptr, FALSE);
      return 0;
    case WM_SIZE:
      Moved();
      return 0;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_MOUSEMOVE:
      Touch(message, PointOf(lparam));
      return 0;
    case WM_LBUTTONUP:
      ReleaseCapture();
      return 0;
    case WM_MOUSEWHEEL:
      return SendMessageW(GetParent(window()), message, wparam, lparam);
    case WM_KEYDOWN:
      return Press(wparam) ? 0 : Default(message, wparam, lparam);
    case WM_CHAR:
      if (edit_.Type(static_cast<char16_t>(wparam))) Changed();
      return 0;
    default:
      return TextMessage(message, wparam, lparam);
  }
}

LRESULT EditWindow::TextMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_SETTEXT: {
      const auto* const text = reinterpret_cast<LPCWSTR>(lparam);
      edit_.Set(text ? text : u"");
      edit_.Mark(0, 0);
      Changed();
      return TRUE;
    }
    case WM_GETTEXT:
      return CopyText(edit_.text(), reinterpret_cast<LPWSTR>(lparam), static_cast<int>(wparam));
    case WM_GETTEXTLENGTH:
      return static_cast<LRESULT>(edit_.text().size());
    case EM_SETSEL:
      Select(wparam, lparam);
      return 0;
    case EM_GETSEL:
      if (wparam) *reinterpret_cast<DWORD*>(wparam) = static_cast<DWORD>(edit_.first());
      if (lparam) *reinterpret_cast<DWORD*>(lparam) = static_cast<DWORD>(edit_.last());
      return MAKELONG(std::min<std::size_t>(edit_.first(), 0xFFFF), std::min<std::size_t>(edit_.last(), 0xFFFF));
    default:
      return Default(message, wparam, lparam);
  }
}

void EditWindow::Show(const std::u16string& text) {
  edit_.Set(text);
  edit_.MarkAll();
  SetTitle(window(), text.c_str());
  Moved();
}

// -1 as the first is no mark, as the last the text's end.
void EditWindow::Select(WPARAM first, LPARAM last) {
  if (static_cast<LPARAM>(first) < 0) {
    edit_.Mark(edit_.caret(), edit_.caret());
  } else {
    edit_.Mark(first, last < 0 ? edit_.text().size() : static_cast<std::size_t>(last));
  }
  Moved();
}

bool EditWindow::Press(WPARAM key) {
  const bool shift = Held(VK_SHIFT);
  switch (key) {
    case VK_LEFT:
      edit_.MoveLeft(shift);
      break;
    case VK_RIGHT:
      edit_.MoveRight(shift);
      break;
    case VK_HOME:
      edit_.MoveHome(shift);
      break;
    case VK_END:
      edit_.MoveEnd(shift);
      break;
    case 'A':
      if (!Held(VK_CONTROL)) return false;
      edit_.MarkAll();
      break;
    case VK_BACK:
      if (edit_.EraseBefore()) Changed();
      return true;
    case VK_DELETE:
      if (edit_.EraseAfter()) Changed();
      return true;
    default:
      return false;
  }
  Moved();
  return true;
}

// A press puts the caret, a pull marks, a double click marks all.
void EditWindow::Touch(UINT message, POINT client) {
  if (message == WM_MOUSEMOVE && GetCapture() != window()) return;
  const std::size_t place = PlaceAt(client.x);
  if (message == WM_LBUTTONDOWN) {
    SetFocus(window());
    SetCapture(window());
    edit_.Mark(Held(VK_SHIFT) ? edit_.first() : place, place);
  } else if (message == WM_LBUTTONDBLCLK) {
    edit_.MarkAll();
  } else {
    const std::size_t anchor = edit_.caret() == edit_.first() ? edit_.last() : edit_.first();
    edit_.Mark(anchor, place);
  }
  Moved();
}

// The window's title is the text too, for programs of other processes.
void EditWindow::Changed() {
  SetTitle(window(), edit_.text().c_str());
  Moved();
  Notify(EN_CHANGE);
}

RECT EditWindow::TextArea() const {
  RECT area{};
  GetClientRect(window(), &area);
  InflateRect(&area, -look_.Px(kPad), -look_.Px(1));
  return area;
}

// Scrolls the caret into sight.
void EditWindow::Moved() {
  const MeasureScope measure;
  const Painter painter(look_, measure.context());
  const RECT area = TextArea();
  const int width = std::max<int>(area.right - area.left - look_.Px(1), 0);
  if (painter) {
    const int caret = painter.WidthOf(std::u16string_view(edit_.text()).substr(0, edit_.caret()));
    const int all = painter.WidthOf(edit_.text());
    scroll_ = std::clamp(scroll_, std::max(caret - width, 0), caret);
    scroll_ = std::min(scroll_, std::max(all - width, 0));
  }
  InvalidateRect(window(), nullptr, FALSE);
}

std::size_t EditWindow::PlaceAt(int x) const {
  const MeasureScope measure;
  const Painter painter(look_, measure.context());
  const std::u16string_view text = edit_.text();
  if (!painter) return text.size();
  const int wanted = x - TextArea().left + scroll_;
  int before = 0;
  for (std::size_t i = 1; i <= text.size(); ++i) {
    const int after = painter.WidthOf(text.substr(0, i));
    if (wanted < (before + after) / 2) return i - 1;
    before = after;
  }
  return text.size();
}

void EditWindow::Paint() {
  const PaintScope paint(window());
  const Painter painter(look_, paint.context());
  if (!painter) return;
  RECT all{};
  GetClientRect(window(), &all);
  const bool focused = GetFocus() == window();
  painter.Fill(all, ink::kPaper);
  painter.Frame(all, focused ? ink::kAccent : ink::kEdge);
  if (focused) {
    const RECT inner{all.left, all.bottom - look_.Px(2), all.right, all.bottom};
    painter.Fill(inner, ink::kAccent);
  }
  SaveDC(paint.context());
  const RECT area = TextArea();
  const HRGN clip = CreateRectRgn(area.left - look_.Px(1), area.top, area.right + look_.Px(1), area.bottom);
  if (clip) ExtSelectClipRgn(paint.context(), clip, RGN_AND);
  PaintText(painter, area);
  if (clip) DeleteObject(clip);
  RestoreDC(paint.context(), -1);
}

void EditWindow::PaintText(const Painter& painter, const RECT& area) const {
  const std::u16string& text = edit_.text();
  const auto x_of = [&](std::size_t place) {
    return static_cast<LONG>(area.left - scroll_ + painter.WidthOf(std::u16string_view(text).substr(0, place)));
  };
  constexpr LONG kFar = 0x7FFF;
  const UINT format = DT_LEFT | DT_NOCLIP;
  painter.Text(text, {area.left - scroll_, area.top, kFar, area.bottom}, ink::kText, format);
  if (GetFocus() != window()) return;
  const LONG inset = look_.Px(4);
  const LONG from = x_of(edit_.first()), to = x_of(edit_.last());
  if (from < to) {
    painter.Fill({from, area.top + inset, to, area.bottom - inset}, ink::kMarked);
    painter.Text(text.substr(edit_.first(), edit_.last() - edit_.first()), {from, area.top, kFar, area.bottom},
                 ink::kPaper, format);
  }
  const LONG caret = x_of(edit_.caret());
  painter.Fill({caret, area.top + inset, caret + look_.Px(1), area.bottom - inset}, ink::kText);
}

}  // namespace winhost
