// Which message of which window a mouse event is.
#include <cstdlib>

#include "winhost/kernel/waitable.h"
#include "winhost/window/activation.h"
#include "winhost/window/device_state.h"
#include "winhost/window/geometry.h"
#include "winhost/window/take_input.h"
#include "winhost/window/tracking.h"
#include "winhost/window/window.h"

namespace winhost {
namespace {

struct Target {
  HWND window = nullptr;
  int part = HTNOWHERE;
};

int AskPart(HWND window, POINT screen) {
  return static_cast<int>(SendMessageW(window, WM_NCHITTEST, 0, MAKELPARAM(screen.x, screen.y)));
}

// The child of `parent`, or its child's child …, that takes the pointer at this point; none when it does itself.
std::optional<Target> ChildAt(HWND parent, POINT screen) {
  const auto children = WindowTable::Current()->List(
      [&](const WindowInfo& info) { return info.parent == parent && info.child() && info.shown(); });
  for (const WindowInfo& child : children) {
    const RECT frame = FrameOnScreen(child);
    if ((child.style & WS_DISABLED) || !PtInRect(&frame, screen)) continue;
    if (const auto inner = ChildAt(child.window, screen)) return inner;
    const int part = AskPart(child.window, screen);
    if (part != HTTRANSPARENT) return Target{child.window, part};
  }
  return std::nullopt;
}

Target TargetOf(ThreadQueue& queue, const InputEvent& event) {
  {
    std::scoped_lock lock(WaitLock());
    if (queue.capture) return {queue.capture, HTCLIENT};
  }
  if (const auto child = ChildAt(event.window, event.point)) return *child;
  return {event.window, AskPart(event.window, event.point)};
}

UINT FrameMessage(UINT message) { return message - WM_MOUSEMOVE + WM_NCMOUSEMOVE; }
UINT DoubleClick(UINT message) { return message + (WM_LBUTTONDBLCLK - WM_LBUTTONDOWN); }
bool IsWheel(UINT message) { return message == WM_MOUSEWHEEL || message == WM_MOUSEHWHEEL; }

// A second press at the same place, soon, in a window whose class asks for it (frames always do).
bool IsDoubleClick(ThreadQueue& queue, const Target& target, const InputEvent& event, bool remove) {
  const auto window = FindLocalWindow(target.window);
  const int reach_x = GetSystemMetrics(SM_CXDOUBLECLK) / 2, reach_y = GetSystemMetrics(SM_CYDOUBLECLK) / 2;
  std::scoped_lock lock(WaitLock());
  const LastClick last = queue.last_click;
  const bool wants = target.part != HTCLIENT || (window && (window->window_class->values.style & CS_DBLCLKS));
  const bool twice = wants && last.window == target.window && last.message == event.message &&
                     event.time - last.time <= GetDoubleClickTime() &&
                     std::abs(last.point.x - event.point.x) <= reach_x &&
                     std::abs(last.point.y - event.point.y) <= reach_y;
  if (remove) queue.last_click = twice ? LastClick{} : LastClick{target.window, event.message, event.point, event.time};
  return twice;
}

MSG Compose(const Target& target, const InputEvent& event, UINT message) {
  MSG made{target.window, message, event.held, 0, event.time, event.point};
  if (IsWheel(message)) {
    made.wParam = MAKEWPARAM(event.held, event.data);
    made.lParam = MAKELPARAM(event.point.x, event.point.y);
  } else if (target.part == HTCLIENT) {
    POINT client = event.point;
    ScreenToClient(target.window, &client);
    made.lParam = MAKELPARAM(client.x, client.y);
  } else {
    made.message = FrameMessage(message);
    made.wParam = static_cast<WPARAM>(target.part);
    made.lParam = MAKELPARAM(event.point.x, event.point.y);
  }
  return made;
}

bool IsDisabled(const WindowInfo& info) { return (info.style & WS_DISABLED) || (TopOf(info).style & WS_DISABLED); }

// The window under a press may become the active one, and may want not to hear of the press then.
bool ActivatedAndEaten(const Target& target, UINT message) {
  const auto info = WindowTable::Current()->Find(target.window);
  if (!info) return true;
  const HWND top = TopOf(*info).window;
  if (GetActiveWindow() == top && GetForegroundWindow() == top) return false;
  const LRESULT answer =
      SendMessageW(target.window, WM_MOUSEACTIVATE, reinterpret_cast<WPARAM>(top), MAKELPARAM(target.part, message));
  if (answer == MA_ACTIVATE || answer == MA_ACTIVATEANDEAT || answer == 0) Activate(top, true);
  return answer == MA_ACTIVATEANDEAT || answer == MA_NOACTIVATEANDEAT;
}

void NoteButton(ThreadQueue& queue, UINT message) {
  const int key = ButtonKey(message);
  if (key == 0) return;
  std::scoped_lock lock(WaitLock());
  queue.keys[static_cast<std::size_t>(key)] = IsButtonDown(message);
}

// A turned wheel is for the window with the focus, wherever the pointer is.
Target WheelTarget(ThreadQueue& queue, const InputEvent& event) {
  std::scoped_lock lock(WaitLock());
  return {queue.focus ? queue.focus : event.window, HTCLIENT};
}

// What the window is told beside the message itself; false when it swallowed the press.
bool TellWindow(ThreadQueue& queue, const Target& target, const InputEvent& event, UINT message, bool captured) {
  NoteButton(queue, event.message);
  PointerMoved(queue, target.window, target.part, event.point);
  if (captured) return true;
  if (IsButtonDown(event.message) && ActivatedAndEaten(target, message)) return false;
  SendMessageW(target.window, WM_SETCURSOR, reinterpret_cast<WPARAM>(target.window), MAKELPARAM(target.part, message));
  return true;
}

}  // namespace

std::optional<MSG> MouseMessage(ThreadQueue& queue, const InputEvent& event, bool remove) {
  const bool wheel = IsWheel(event.message);
  const Target target = wheel ? WheelTarget(queue, event) : TargetOf(queue, event);
  const auto info = WindowTable::Current()->Find(target.window);
  if (!info || target.part == HTNOWHERE || target.part == HTTRANSPARENT) return std::nullopt;
  bool captured = false;
  {
    std::scoped_lock lock(WaitLock());
    captured = queue.capture != nullptr;
  }
  if (IsDisabled(*info) && !captured) {
    if (!remove) return std::nullopt;
    PointerMoved(queue, nullptr, HTNOWHERE, event.point);
    SendMessageW(target.window, WM_SETCURSOR, reinterpret_cast<WPARAM>(target.window),
                 MAKELPARAM(static_cast<WORD>(HTERROR), event.message));
    return std::nullopt;
  }
  UINT message = event.message;
  if (IsButtonDown(message) && IsDoubleClick(queue, target, event, remove)) message = DoubleClick(message);
  if (remove && !wheel && !TellWindow(queue, target, event, message, captured)) return std::nullopt;
  return Compose(target, event, message);
}

}  // namespace winhost
