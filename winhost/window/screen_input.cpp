#include <iterator>

#include "winhost/kernel/waitable.h"
#include "winhost/window/device_state.h"
#include "winhost/window/dpi.h"
#include "winhost/window/inject.h"
#include "winhost/window/screen.h"
#include "winhost/window/us_keyboard.h"
#include "winhost/window/window.h"

namespace winhost::screen {
namespace {

POINT Pointer() {
  std::scoped_lock lock(WaitLock());
  return TheDevices().pointer;
}

UINT DownMessage(Button button) {
  return button == Button::Left ? WM_LBUTTONDOWN : button == Button::Right ? WM_RBUTTONDOWN : WM_MBUTTONDOWN;
}

RECT Rescaled(const RECT& place, int from, int to) {
  return {place.left, place.top, place.left + MulDiv(place.right - place.left, to, from),
          place.top + MulDiv(place.bottom - place.top, to, from)};
}

}  // namespace

void MovePointer(int x, int y) { InjectMouse(nullptr, WM_MOUSEMOVE, {x, y}, 0); }
void Press(Button button) { InjectMouse(nullptr, DownMessage(button), Pointer(), 0); }
void Release(Button button) { InjectMouse(nullptr, DownMessage(button) + 1, Pointer(), 0); }

void Click(int x, int y, Button button) {
  MovePointer(x, y);
  Press(button);
  Release(button);
}

void Wheel(int notches) { InjectMouse(nullptr, WM_MOUSEWHEEL, Pointer(), notches * WHEEL_DELTA); }

void KeyDown(int key) { InjectKey(key, true, 0); }
void KeyUp(int key) { InjectKey(key, false, 0); }
void Key(int key) {
  KeyDown(key);
  KeyUp(key);
}

void Type(std::u16string_view text) {
  for (const char16_t character : text) {
    const KeyRow* row = FindKeyFor(character);
    const int key = row ? row->key : VK_PACKET;
    const bool shift = row && row->plain != character;
    if (shift) KeyDown(VK_SHIFT);
    InjectKey(key, true, character);
    InjectKey(key, false, 0);
    if (shift) KeyUp(VK_SHIFT);
  }
}

void Touch(int contact, int x, int y, ContactKind kind) { InjectTouch(WM_POINTERDOWN, contact, {x, y}, kind); }
void MoveTouch(int contact, int x, int y, ContactKind kind) { InjectTouch(WM_POINTERUPDATE, contact, {x, y}, kind); }
void LiftTouch(int contact, int x, int y, ContactKind kind) { InjectTouch(WM_POINTERUP, contact, {x, y}, kind); }

void ChangeDpi(int dpi) {
  const int before = ScreenDpi();
  SetScreenDpi(dpi);
  for (const auto& window : LocalWindows([](const Window&) { return true; })) {
    const auto info = window->table->Find(window->handle);
    if (!info || !info->top_level()) continue;
    RECT suggested = Rescaled(info->place, before, dpi);
    SendMessageW(window->handle, WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&suggested));
  }
}

}  // namespace winhost::screen
