#include "winhost/x11/connection.h"

#include <cstdlib>
#include <cstring>

namespace winhost {
namespace {

xcb_visualid_t FindAlphaVisual(const xcb_screen_t* screen) {
  for (auto depth = xcb_screen_allowed_depths_iterator(screen); depth.rem; xcb_depth_next(&depth)) {
    if (depth.data->depth != 32) continue;
    const auto visual = xcb_depth_visuals_iterator(depth.data);
    if (visual.rem) return visual.data->visual_id;
  }
  return 0;
}

// Pictures are sent as they are: 32 bits a pixel, the lowest byte first.
bool TakesOurPixels(xcb_connection_t* connection, const xcb_screen_t* screen) {
  const xcb_setup_t* setup = xcb_get_setup(connection);
  if (screen->root_depth < 24 || setup->image_byte_order != XCB_IMAGE_ORDER_LSB_FIRST) return false;
  for (auto format = xcb_setup_pixmap_formats_iterator(setup); format.rem; xcb_format_next(&format)) {
    if (format.data->depth == screen->root_depth) return format.data->bits_per_pixel == 32;
  }
  return false;
}

}  // namespace

void XcbFreed::operator()(void* reply) const { std::free(reply); }

XConnection::XConnection() {
  int number = 0;
  get = xcb_connect(nullptr, &number);
  if (xcb_connection_has_error(get)) {
    why = "no X display to connect to";
    return;
  }
  auto screens = xcb_setup_roots_iterator(xcb_get_setup(get));
  while (number-- > 0 && screens.rem > 1) xcb_screen_next(&screens);
  screen = screens.data;
  alpha_visual = FindAlphaVisual(screen);
  if (!TakesOurPixels(get, screen)) why = "the X display has no 32-bit pixels";
}

XConnection::~XConnection() { xcb_disconnect(get); }

xcb_atom_t XConnection::Atom(const char* name) const {
  const auto asked = xcb_intern_atom(get, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
  const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(get, asked, nullptr));
  return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

bool XConnection::HasManager() const {
  const auto asked = xcb_get_window_attributes(get, screen->root);
  const Reply<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(get, asked, nullptr));
  return reply && (reply->all_event_masks & XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT);
}

bool XConnection::HasCompositor() const {
  const auto asked = xcb_get_selection_owner(get, Atom("_NET_WM_CM_S0"));
  const Reply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(get, asked, nullptr));
  return reply && reply->owner != XCB_NONE;
}

}  // namespace winhost
