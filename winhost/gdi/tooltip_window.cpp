#include "winhost/gdi/tooltip_window.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "winhost/gdi/window_drawing.h"
#include "winhost/window/dpi.h"

namespace winhost {
namespace {

constexpr UINT_PTR kShowTimer = 1, kHideTimer = 2;
constexpr COLORREF kFrame = 0x767676;
constexpr int kPadX = 6, kPadY = 3;  // between border and text, at 96 dpi
constexpr int kBelowPointer = 20;    // so that the arrow does not cover the text, at 96 dpi

int Scaled(int length) { return MulDiv(length, SystemDpi(), 96); }

class UsedFont {
 public:
  UsedFont(HDC context, HFONT font) : context_(context) {
    former_ = SelectObject(context, font ? font : GetStockObject(DEFAULT_GUI_FONT));
  }
  ~UsedFont() { SelectObject(context_, former_); }
  UsedFont(const UsedFont&) = delete;
  UsedFont& operator=(const UsedFont&) = delete;

 private:
  HDC context_;
  HGDIOBJ former_;
};

TTTOOLINFOW KeyOf(const TooltipTool& tool) {
  TTTOOLINFOW key{};
  key.cbSize = sizeof key;
  key.hwnd = tool.window;
  key.uId = tool.id;
  return key;
}

void FillAndDelete(HDC context, const RECT& area, COLORREF color, bool frame) {
  const HBRUSH brush = CreateSolidBrush(color);
  if (frame) {
    FrameRect(context, &area, brush);
  } else {
    FillRect(context, &area, brush);
  }
  DeleteObject(brush);
}

}  // namespace

void RegisterTooltipClass() {
  WNDCLASSEXW values{};
  values.cbSize = sizeof values;
  values.style = CS_GLOBALCLASS | CS_SAVEBITS | CS_DROPSHADOW | CS_HREDRAW | CS_VREDRAW;
  values.lpfnWndProc = TooltipWindow::Procedure;
  values.cbWndExtra = sizeof(void*);
  values.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  values.lpszClassName = TOOLTIPS_CLASSW;
  RegisterClassExW(&values);
}

LRESULT CALLBACK TooltipWindow::Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_NCCREATE) {
    auto made = std::make_unique<TooltipWindow>(window);
    SetWindowLongPtrW(window, 0, reinterpret_cast<LONG_PTR>(made.release()));
    SetWindowLongPtrW(window, GWL_EXSTYLE, WS_EX_TOPMOST | WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE);
  }
  auto* self = reinterpret_cast<TooltipWindow*>(GetWindowLongPtrW(window, 0));
  if (!self) return DefWindowProcW(window, message, wparam, lparam);
  if (message == WM_NCDESTROY) {
    const std::unique_ptr<TooltipWindow> ended(self);
    SetWindowLongPtrW(window, 0, 0);
    return DefWindowProcW(window, message, wparam, lparam);
  }
  return self->Handle(message, wparam, lparam);
}

LRESULT TooltipWindow::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_PAINT:
      Paint();
      return 0;
    case WM_ERASEBKGND:
      return TRUE;
    case WM_NCHITTEST:
      return HTTRANSPARENT;
    case WM_MOUSEACTIVATE:
      return MA_NOACTIVATE;
    case WM_TIMER:
      KillTimer(window_, wparam);
      if (wparam == kHideTimer) {
        Hide();
      } else if (const TooltipTool* tool = Shown()) {
        ShowFor(*tool);
      }
      return 0;
    case WM_SETFONT:
      font_ = reinterpret_cast<HFONT>(wparam);
      Refresh();
      return 0;
    case WM_GETFONT:
      return reinterpret_cast<LRESULT>(font_);
    default:
      break;
  }
  if (message < WM_USER || message >= WM_APP) return DefWindowProcW(window_, message, wparam, lparam);
  return HandleTools(message, wparam, lparam);
}

LRESULT TooltipWindow::HandleTools(UINT message, WPARAM wparam, LPARAM lparam) {
  auto* info = reinterpret_cast<TTTOOLINFOW*>(lparam);
  switch (message) {
    case TTM_ADDTOOLW:
      return tools_.Add(info);
    case TTM_DELTOOLW:
      tools_.Remove(info);
      if (!Shown()) Hide();
      return 0;
    case TTM_NEWTOOLRECTW:
      tools_.ChangeArea(info);
      return 0;
    case TTM_SETTOOLINFOW:
      if (tools_.Change(info)) Refresh();
      return 0;
    case TTM_UPDATETIPTEXTW:
      if (tools_.ChangeText(info)) Refresh();
      return 0;
    case TTM_GETTOOLINFOW: {
      const TooltipTool* tool = tools_.Find(info);
      return tool && TooltipTools::Write(*tool, info, true);
    }
    case TTM_GETTEXTW: {
      const TooltipTool* tool = tools_.Find(info);
      if (tool) TooltipTools::Write(*tool, info, true);
      return 0;
    }
    case TTM_ENUMTOOLSW: {
      const TooltipTool* tool = tools_.At(wparam);
      return tool && TooltipTools::Write(*tool, info, true);
    }
    case TTM_GETCURRENTTOOLW: {
      const TooltipTool* tool = shown_ ? Shown() : nullptr;
      return info ? tool && TooltipTools::Write(*tool, info, true) : tool != nullptr;
    }
    case TTM_GETTOOLCOUNT:
      return static_cast<LRESULT>(tools_.Count());
    case TTM_TRACKACTIVATE:
      return Track(wparam != 0, info);
    case TTM_TRACKPOSITION:
      point_ = {static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))};
      Refresh();
      return 0;
    case TTM_RELAYEVENT:
      if (lparam) Relay(*reinterpret_cast<const MSG*>(lparam));
      return 0;
    case TTM_GETBUBBLESIZE: {
      const TooltipTool* tool = tools_.Find(info);
      const SIZE size = tool ? Measure(tool->text) : SIZE{};
      return MAKELONG(size.cx, size.cy);
    }
    default:
      return HandleLooks(message, wparam, lparam);
  }
}

LRESULT TooltipWindow::HandleLooks(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case TTM_ACTIVATE:
      active_ = wparam != 0;
      if (!active_) Hide();
      return 0;
    case TTM_POP:
      Hide();
      return 0;
    case TTM_UPDATE:
      InvalidateRect(window_, nullptr, FALSE);
      return 0;
    case TTM_SETMAXTIPWIDTH:
      return std::exchange(most_width_, static_cast<int>(lparam));
    case TTM_GETMAXTIPWIDTH:
      return most_width_;
    case TTM_SETDELAYTIME:
      SetDelay(wparam, static_cast<short>(LOWORD(lparam)));
      return 0;
    case TTM_GETDELAYTIME:
      return wparam == TTDT_RESHOW ? reshow_ms_ : wparam == TTDT_AUTOPOP ? autopop_ms_ : initial_ms_;
    case TTM_SETTIPBKCOLOR:
      back_ = static_cast<COLORREF>(wparam);
      InvalidateRect(window_, nullptr, FALSE);
      return 0;
    case TTM_SETTIPTEXTCOLOR:
      ink_ = static_cast<COLORREF>(wparam);
      InvalidateRect(window_, nullptr, FALSE);
      return 0;
    case TTM_GETTIPBKCOLOR:
      return static_cast<LRESULT>(back_);
    case TTM_GETTIPTEXTCOLOR:
      return static_cast<LRESULT>(ink_);
    case TTM_SETMARGIN:
      if (lparam) margin_ = *reinterpret_cast<const RECT*>(lparam);
      Refresh();
      return 0;
    case TTM_GETMARGIN:
      if (lparam) *reinterpret_cast<RECT*>(lparam) = margin_;
      return 0;
    case TTM_ADJUSTRECT: {
      auto* area = reinterpret_cast<RECT*>(lparam);
      if (!area) return FALSE;
      const RECT inner = TextArea(*area);
      *area = wparam ? RECT{2 * area->left - inner.left, 2 * area->top - inner.top, 2 * area->right - inner.right,
                            2 * area->bottom - inner.bottom}
                     : inner;
      return TRUE;
    }
    default:
      return 0;
  }
}

const TooltipTool* TooltipWindow::Shown() const { return key_.cbSize ? tools_.Find(&key_) : nullptr; }

LRESULT TooltipWindow::Track(bool on, const TTTOOLINFOW* info) {
  const TooltipTool* tool = tools_.Find(info);
  if (!on || !tool) {
    Hide();
  } else if (active_) {
    ShowFor(*tool);
  }
  return 0;
}

// The program passes on what its windows hear: a rest over a tool shows its text, a press takes it away.
void TooltipWindow::Relay(const MSG& message) {
  if (message.message != WM_MOUSEMOVE) {
    if (message.message > WM_MOUSEMOVE && message.message <= WM_MBUTTONDBLCLK) Hide();
    return;
  }
  const POINT client{static_cast<short>(LOWORD(message.lParam)), static_cast<short>(HIWORD(message.lParam))};
  const TooltipTool* tool = active_ ? tools_.Under(message.hwnd, client) : nullptr;
  if (!tool) {
    Hide();
    return;
  }
  if (tool == Shown() && shown_) return;
  const bool moves_on = shown_;
  Hide();
  key_ = KeyOf(*tool);
  GetCursorPos(&point_);
  SetTimer(window_, kShowTimer, static_cast<UINT>(moves_on ? reshow_ms_ : initial_ms_), nullptr);
}

void TooltipWindow::SetDelay(WPARAM which, int ms) {
  constexpr int kUsualInitial = 500, kAutopopFactor = 10, kReshowShare = 5;
  switch (which) {
    case TTDT_INITIAL:
      initial_ms_ = ms < 0 ? kUsualInitial : ms;
      break;
    case TTDT_AUTOPOP:
      autopop_ms_ = ms < 0 ? kUsualInitial * kAutopopFactor : ms;
      break;
    case TTDT_RESHOW:
      reshow_ms_ = ms < 0 ? kUsualInitial / kReshowShare : ms;
      break;
    case TTDT_AUTOMATIC:
      initial_ms_ = ms < 0 ? kUsualInitial : ms;
      autopop_ms_ = initial_ms_ * kAutopopFactor;
      reshow_ms_ = initial_ms_ / kReshowShare;
      break;
    default:
      break;
  }
}

UINT TooltipWindow::TextFormat() const {
  UINT format = DT_LEFT | (most_width_ < 0 ? DT_SINGLELINE : DT_WORDBREAK);
  if (GetWindowLongW(window_, GWL_STYLE) & TTS_NOPREFIX) format |= DT_NOPREFIX;
  return format;
}

SIZE TooltipWindow::Measure(const std::u16string& text) const {
  RECT area{0, 0, most_width_ < 0 ? 0x7FFF : std::max(most_width_, 1), 0};
  const HDC context = GetDC(window_);
  if (context) {
    const UsedFont font(context, font_);
    DrawTextW(context, text.c_str(), static_cast<int>(text.size()), &area, TextFormat() | DT_CALCRECT);
  }
  if (context) ReleaseDC(window_, context);
  return {area.right + 2 * Scaled(kPadX) + margin_.left + margin_.right,
          area.bottom + 2 * Scaled(kPadY) + margin_.top + margin_.bottom};
}

RECT TooltipWindow::TextArea(const RECT& box) const {
  return {box.left + Scaled(kPadX) + margin_.left, box.top + Scaled(kPadY) + margin_.top,
          box.right - Scaled(kPadX) - margin_.right, box.bottom - Scaled(kPadY) - margin_.bottom};
}

// Within the work area: to the left of the edge that it would cross, above the pointer where there is no room below.
POINT TooltipWindow::PlaceFor(const TooltipTool& tool, SIZE size) const {
  if (tool.flags & TTF_ABSOLUTE) return point_;
  RECT work{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  POINT place{point_.x, point_.y + Scaled(kBelowPointer)};
  if (tool.flags & TTF_CENTERTIP) place.x -= size.cx / 2;
  if (place.y + size.cy > work.bottom) place.y = point_.y - size.cy;
  place.x = std::max(std::min(place.x, work.right - size.cx), work.left);
  place.y = std::max(place.y, work.top);
  return place;
}

void TooltipWindow::ShowFor(const TooltipTool& tool) {
  if (tool.text.empty()) {
    Hide();
    return;
  }
  key_ = KeyOf(tool);
  const bool was_shown = std::exchange(shown_, true), leaves = !(tool.flags & TTF_TRACK);
  const SIZE size = Measure(tool.text);
  const POINT place = PlaceFor(tool, size);
  const HWND window = window_;
  if (!was_shown) Notify(TTN_SHOW);
  if (!IsWindow(window) || !shown_) return;  // whoever heard of it took it away
  SetWindowPos(window, HWND_TOPMOST, place.x, place.y, size.cx, size.cy, SWP_NOACTIVATE | SWP_SHOWWINDOW);
  InvalidateRect(window, nullptr, FALSE);
  UpdateWindow(window);
  if (leaves) SetTimer(window, kHideTimer, static_cast<UINT>(autopop_ms_), nullptr);
}

void TooltipWindow::Hide() {
  KillTimer(window_, kShowTimer);
  KillTimer(window_, kHideTimer);
  const HWND window = window_;
  if (std::exchange(shown_, false)) {
    ShowWindow(window, SW_HIDE);
    Notify(TTN_POP);
    if (!IsWindow(window)) return;
  }
  key_ = {};
}

void TooltipWindow::Refresh() {
  const TooltipTool* tool = shown_ ? Shown() : nullptr;
  if (tool) ShowFor(*tool);
}

void TooltipWindow::Notify(UINT code) const {
  NMHDR header{window_, key_.uId, code};
  if (key_.hwnd) SendMessageW(key_.hwnd, WM_NOTIFY, key_.uId, reinterpret_cast<LPARAM>(&header));
}

void TooltipWindow::Paint() {
  PAINTSTRUCT paint;
  const HDC context = BeginPaint(window_, &paint);
  if (!context) return;
  RECT box{};
  GetClientRect(window_, &box);
  FillAndDelete(context, box, back_, false);
  FillAndDelete(context, box, kFrame, true);
  if (const TooltipTool* tool = Shown()) {
    const UsedFont font(context, font_);
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, ink_);
    RECT area = TextArea(box);
    DrawTextW(context, tool->text.c_str(), static_cast<int>(tool->text.size()), &area, TextFormat());
  }
  EndPaint(window_, &paint);
}

}  // namespace winhost
