#include "winhost/window/inject.h"

#include <unistd.h>

#include <algorithm>
#include <utility>

#include "winhost/kernel/waitable.h"
#include "winhost/machine/clock.h"
#include "winhost/window/device_state.h"
#include "winhost/window/geometry.h"
#include "winhost/window/input_packet.h"
#include "winhost/window/post_office.h"
#include "winhost/window/window.h"

namespace winhost {
namespace {

DWORD Now() { return static_cast<DWORD>(MachineTicksMs()); }

bool SeenAt(const WindowInfo& info, POINT screen) {
  if (!info.top_level() || !info.shown() || (info.style & WS_MINIMIZE) || (info.ex_style & WS_EX_TRANSPARENT)) {
    return false;
  }
  if (!PtInRect(&info.place, screen)) return false;
  const auto window = FindLocalWindow(info.window);
  if (!window) return true;
  const POINT inside{screen.x - info.place.left, screen.y - info.place.top};
  std::scoped_lock lock(WaitLock());
  if (window->shape && !window->shape->Contains(inside)) return false;
  if (!window->layer.per_pixel || !window->picture) return true;
  const Picture& picture = *window->picture;
  return inside.x < picture.width && inside.y < picture.height && picture.At(inside.x, inside.y)[3] != 0;
}

void Push(const std::shared_ptr<ThreadQueue>& queue, const InputEvent& event) {
  {
    std::scoped_lock lock(WaitLock());
    if (queue->ended) return;
    queue->Push(event);
  }
  WakeWaiters();
}

// To the thread of the window, wherever that is.
void Deliver(HWND window, InputEvent event) {
  if (const auto local = FindLocalWindow(window)) {
    Push(local->queue, event);
    return;
  }
  const auto info = WindowTable::Current()->Find(window);
  if (info) PostOffice::Current().Deliver(info->process, PacketOfInput(*info, event));
}

// The window of this process that has the capture; null for none.
HWND Captured() {
  const auto holding = LocalWindows([](const Window& window) { return window.queue->capture == window.handle; });
  return holding.empty() ? nullptr : holding.front()->handle;
}

// Another thread's window takes over: the one that the pointer leaves hears of it.
void LeaveFor(HWND window) {
  HWND before = nullptr;
  {
    std::scoped_lock lock(WaitLock());
    before = std::exchange(TheDevices().under, window);
  }
  const auto left = FindLocalWindow(before), entered = FindLocalWindow(window);
  if (!left || (entered && entered->queue == left->queue)) return;
  InputEvent event;
  event.kind = InputKind::Gone;
  event.window = before;
  event.time = Now();
  Push(left->queue, event);
}

WORD NoteMouse(UINT message, POINT screen) {
  std::scoped_lock lock(WaitLock());
  DeviceState& devices = TheDevices();
  devices.pointer = screen;
  if (const int key = ButtonKey(message)) {
    const bool down = IsButtonDown(message);
    devices.keys[static_cast<std::size_t>(key)] = down;
    if (down) devices.pressed_since[static_cast<std::size_t>(key)] = true;
  }
  return devices.Held();
}

}  // namespace

HWND TopWindowAt(POINT screen) {
  const auto windows = WindowTable::Current()->List(
      [&](const WindowInfo& info) { return info.top_level() && PtInRect(&info.place, screen); });
  const auto seen = std::ranges::find_if(windows, [&](const WindowInfo& info) { return SeenAt(info, screen); });
  return seen == windows.end() ? nullptr : seen->window;
}

void InjectMouse(HWND window, UINT message, POINT screen, int data) {
  const HWND captured = Captured();
  if (!window) window = TopWindowAt(screen);
  const WORD held = NoteMouse(message, screen);
  LeaveFor(window);
  if (captured) window = captured;
  if (!window) return;
  InputEvent event;
  event.kind = InputKind::Mouse;
  event.window = window;
  event.message = message;
  event.point = screen;
  event.data = data;
  event.held = held;
  event.time = Now();
  Deliver(window, event);
}

void InjectPointerGone() { LeaveFor(nullptr); }

void InjectKey(int key, bool down, char16_t character) {
  if (key <= 0 || key > 255) return;
  const HWND window = WindowTable::Current()->Foreground();
  InputEvent event;
  {
    std::scoped_lock lock(WaitLock());
    DeviceState& devices = TheDevices();
    devices.keys[static_cast<std::size_t>(key)] = down;
    if (down) devices.pressed_since[static_cast<std::size_t>(key)] = true;
    event.held = devices.Held();
  }
  event.kind = InputKind::Key;
  event.window = window;
  event.message = down ? WM_KEYDOWN : WM_KEYUP;
  event.data = key;
  event.character = character;
  event.time = Now();
  if (window) Deliver(window, event);
}

void InjectTouch(UINT message, int contact, POINT screen, ContactKind kind) {
  HWND window = Captured();
  if (!window) window = TopWindowAt(screen);
  InputEvent event;
  event.kind = InputKind::Touch;
  event.window = window;
  event.message = message;
  event.point = screen;
  event.data = contact;
  event.contact = kind;
  event.time = Now();
  if (window) Deliver(window, event);
}

}  // namespace winhost
