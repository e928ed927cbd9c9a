// The display's keyboard: which key and which character a key press is.
#pragma once

#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>

#include <memory>

namespace winhost {

struct PressedKey {
  int key = 0;  // VK_…; 0: none that Windows knows
  char16_t character = 0;
};

class X11Keyboard {
 public:
  explicit X11Keyboard(xcb_connection_t* connection) : symbols_(xcb_key_symbols_alloc(connection)) {}

  PressedKey Find(xcb_keycode_t code, std::uint16_t state) const;
  void Refresh(xcb_mapping_notify_event_t* event) { xcb_refresh_keyboard_mapping(symbols_.get(), event); }

 private:
  struct Freed {
    void operator()(xcb_key_symbols_t* symbols) const { xcb_key_symbols_free(symbols); }
  };
  std::unique_ptr<xcb_key_symbols_t, Freed> symbols_;
};

}  // namespace winhost
