#include "winhost/window/move_loop.h"

#include <algorithm>

#include "winhost/window/place.h"
#include "winhost/window/window.h"

namespace winhost {
namespace {

constexpr int kKeyStep = 8;  // pixels that an arrow key moves

bool MovesLeft(int part) { return part == HTLEFT || part == HTTOPLEFT || part == HTBOTTOMLEFT; }
bool MovesRight(int part) { return part == HTRIGHT || part == HTTOPRIGHT || part == HTBOTTOMRIGHT; }
bool MovesTop(int part) { return part == HTTOP || part == HTTOPLEFT || part == HTTOPRIGHT; }
bool MovesBottom(int part) { return part == HTBOTTOM || part == HTBOTTOMLEFT || part == HTBOTTOMRIGHT; }

int Clamp(int value, int least, int most) { return std::max(std::min(value, most), least); }

class MoveLoop {
 public:
  MoveLoop(HWND window, int part) : window_(window), part_(part) {
    const DWORD at = GetMessagePos();  // where the button went down; the pointer may have moved on since
    start_ = now_ = {static_cast<short>(LOWORD(at)), static_cast<short>(HIWORD(at))};
    GetWindowRect(window, &before_);
    const MINMAXINFO limits = AskLimits(window);
    least_ = limits.ptMinTrackSize;
    most_ = limits.ptMaxTrackSize;
  }

  void Run() {
    SetCapture(window_);
    SendMessageW(window_, WM_ENTERSIZEMOVE, 0, 0);
    MSG message;
    bool going = IsWindow(window_);
    while (going && GetCapture() == window_) {
      const BOOL got = GetMessageW(&message, nullptr, 0, 0);
      if (got <= 0) {
        if (got == 0) PostQuitMessage(static_cast<int>(message.wParam));
        break;
      }
      going = Handle(message) && IsWindow(window_);
    }
    if (!IsWindow(window_)) return;
    if (GetCapture() == window_) ReleaseCapture();
    SendMessageW(window_, WM_EXITSIZEMOVE, 0, 0);
  }

 private:
  // False ends the loop.
  bool Handle(const MSG& message) {
    switch (message.message) {
      case WM_MOUSEMOVE:
        if (message.hwnd != window_) break;
        now_ = message.pt;
        Follow();
        return true;
      case WM_LBUTTONUP:
        now_ = message.pt;
        Follow();
        return false;
      case WM_KEYDOWN:
      case WM_SYSKEYDOWN:
        return HandleKey(message.wParam);
      default:
        break;
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
    return true;
  }

  bool HandleKey(WPARAM key) {
    if (key == VK_ESCAPE) now_ = start_;
    if (key == VK_LEFT) now_.x -= kKeyStep;
    if (key == VK_RIGHT) now_.x += kKeyStep;
    if (key == VK_UP) now_.y -= kKeyStep;
    if (key == VK_DOWN) now_.y += kKeyStep;
    Follow();
    return key != VK_ESCAPE && key != VK_RETURN;
  }

  RECT Wanted() const {
    RECT wanted = before_;
    const int dx = now_.x - start_.x, dy = now_.y - start_.y;
    if (part_ == HTCAPTION) {
      OffsetRect(&wanted, dx, dy);
      return wanted;
    }
    const int width = before_.right - before_.left, height = before_.bottom - before_.top;
    if (MovesLeft(part_)) wanted.left = wanted.right - Clamp(width - dx, least_.x, most_.x);
    if (MovesRight(part_)) wanted.right = wanted.left + Clamp(width + dx, least_.x, most_.x);
    if (MovesTop(part_)) wanted.top = wanted.bottom - Clamp(height - dy, least_.y, most_.y);
    if (MovesBottom(part_)) wanted.bottom = wanted.top + Clamp(height + dy, least_.y, most_.y);
    return wanted;
  }

  void Follow() {
    RECT wanted = Wanted(), now;
    GetWindowRect(window_, &now);
    if (EqualRect(&wanted, &now)) return;
    const bool moves = part_ == HTCAPTION;
    const WPARAM edge = moves ? 0 : static_cast<WPARAM>(part_ - HTLEFT + WMSZ_LEFT);
    SendMessageW(window_, moves ? WM_MOVING : WM_SIZING, edge, reinterpret_cast<LPARAM>(&wanted));
    SetWindowPos(window_, nullptr, wanted.left, wanted.top, wanted.right - wanted.left, wanted.bottom - wanted.top,
                 SWP_NOZORDER | SWP_NOACTIVATE | (moves ? SWP_NOSIZE : 0u));
    UpdateWindow(window_);
  }

  HWND window_;
  int part_;
  POINT start_{}, now_{}, least_{}, most_{};
  RECT before_{};
};

}  // namespace

void RunMoveLoop(HWND window, int part) {
  if (!MyWindow(window) || IsZoomed(window) || IsIconic(window)) return;
  MoveLoop(window, part).Run();
}

}  // namespace winhost
