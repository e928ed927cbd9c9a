// What a device did, before it is known which message it becomes: that is decided when the thread fetches it.
#pragma once

#include <windows.h>

namespace winhost {

enum class InputKind : std::uint32_t {
  Mouse,  // `message` is that of the client area: WM_MOUSEMOVE, WM_LBUTTONDOWN …
  Key,    // `message` is WM_KEYDOWN or WM_KEYUP
  Touch,  // `message` is WM_POINTERDOWN, WM_POINTERUPDATE or WM_POINTERUP
  Gone,   // the pointer has left this thread's windows
};

enum class ContactKind : std::uint32_t { Finger, Pen };

struct InputEvent {
  InputKind kind = InputKind::Mouse;
  HWND window = nullptr;  // the top-level window that it happened to; for keys the foremost one then
  UINT message = 0;
  POINT point{};           // on the screen
  int data = 0;            // wheel: the way turned; key: its number; touch: the contact's
  WORD held = 0;           // MK_… at that moment
  char16_t character = 0;  // of a key press, if the device knows it
  ContactKind contact = ContactKind::Finger;
  DWORD time = 0;
};

}  // namespace winhost
