#include "winhost/x11/x11_window.h"

#include <xcb/shape.h>
#include <xcb/xcb_icccm.h>

#include <algorithm>
#include <cstring>

#include "winhost/machine/text.h"
#include "winhost/window/icons.h"

namespace winhost {
namespace {

constexpr std::uint32_t kEvents =
    XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_POINTER_MOTION |
    XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_KEY_PRESS |
    XCB_EVENT_MASK_KEY_RELEASE | XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_LEAVE_WINDOW |
    XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_PROPERTY_CHANGE;
constexpr std::uint8_t kOpaqueFrom = 128;  // alpha from which a pixel belongs to a shape

std::uint32_t Side(LONG length) { return static_cast<std::uint32_t>(std::max<LONG>(length, 1)); }

xcb_rectangle_t RectangleOf(const RECT& rect) {
  return {static_cast<std::int16_t>(rect.left), static_cast<std::int16_t>(rect.top),
          static_cast<std::uint16_t>(rect.right - rect.left), static_cast<std::uint16_t>(rect.bottom - rect.top)};
}

bool BypassesManager(const WindowInfo& info) {
  return (info.ex_style & (WS_EX_TOOLWINDOW | WS_EX_TRANSPARENT | WS_EX_NOACTIVATE)) ||
         EqualNoCase(info.class_name, u"tooltips_class32");
}

bool SameShape(const std::vector<RECT>& a, const std::vector<RECT>& b) {
  return std::ranges::equal(a, b, [](const RECT& x, const RECT& y) { return EqualRect(&x, &y) != FALSE; });
}

}  // namespace

X11Window::X11Window(XConnection& connection, const WindowInfo& info, xcb_window_t owner)
    : connection_(connection), managed_(!BypassesManager(info)), layered_((info.ex_style & WS_EX_LAYERED) != 0) {
  xcb_connection_t* const x = connection.get;
  const bool alpha = layered_ && connection.alpha_visual && connection.HasCompositor();
  depth_ = alpha ? 32 : connection.screen->root_depth;
  const xcb_visualid_t visual = alpha ? connection.alpha_visual : connection.screen->root_visual;
  colors_ = xcb_generate_id(x);
  xcb_create_colormap(x, XCB_COLORMAP_ALLOC_NONE, colors_, connection.screen->root, visual);
  id_ = xcb_generate_id(x);
  place_ = info.place;
  const std::uint32_t values[] = {0, managed_ ? 0u : 1u, kEvents, colors_};
  xcb_create_window(x, depth_, id_, connection.screen->root, static_cast<std::int16_t>(place_.left),
                    static_cast<std::int16_t>(place_.top), static_cast<std::uint16_t>(Side(place_.right - place_.left)),
                    static_cast<std::uint16_t>(Side(place_.bottom - place_.top)), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                    visual, XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
                    values);
  context_ = xcb_generate_id(x);
  xcb_create_gc(x, context_, id_, 0, nullptr);
  SetHints(info, owner);
  if (info.ex_style & WS_EX_TRANSPARENT) {  // the pointer passes through
    xcb_shape_rectangles(x, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED, id_, 0, 0, 0, nullptr);
  }
}

X11Window::~X11Window() {
  xcb_free_gc(connection_.get, context_);
  xcb_destroy_window(connection_.get, id_);
  xcb_free_colormap(connection_.get, colors_);
  xcb_flush(connection_.get);
}

void X11Window::SetHints(const WindowInfo& info, xcb_window_t owner) {
  xcb_connection_t* const x = connection_.get;
  const xcb_atom_t protocols = connection_.Atom("WM_PROTOCOLS"), close = connection_.Atom("WM_DELETE_WINDOW");
  xcb_change_property(x, XCB_PROP_MODE_REPLACE, id_, protocols, XCB_ATOM_ATOM, 32, 1, &close);
  const xcb_atom_t motif = connection_.Atom("_MOTIF_WM_HINTS");
  constexpr std::uint32_t kNoDecorations[] = {2, 0, 0, 0, 0};  // flags: decorations; functions, decorations …
  xcb_change_property(x, XCB_PROP_MODE_REPLACE, id_, motif, motif, 32, 5, kNoDecorations);
  xcb_icccm_wm_hints_t hints{};
  xcb_icccm_wm_hints_set_input(&hints, 1);
  xcb_icccm_wm_hints_set_normal(&hints);
  xcb_icccm_set_wm_hints(x, id_, &hints);
  const std::string name = Narrow(info.class_name);
  const std::string both = name + '\0' + name + '\0';
  xcb_icccm_set_wm_class(x, id_, static_cast<std::uint32_t>(both.size()), both.data());
  if (owner) xcb_icccm_set_wm_transient_for(x, id_, owner);
}

void X11Window::SetTitle(const std::u16string& title) {
  title_ = title;
  const std::string text = Narrow(title);
  const auto length = static_cast<std::uint32_t>(text.size());
  const xcb_atom_t utf8 = connection_.Atom("UTF8_STRING");
  xcb_change_property(connection_.get, XCB_PROP_MODE_REPLACE, id_, connection_.Atom("_NET_WM_NAME"), utf8, 8, length,
                      text.data());
  xcb_icccm_set_wm_name(connection_.get, id_, utf8, 8, length, text.data());
}

// Static gravity: the place is that of the window itself, whatever a manager puts around it.
void X11Window::SetPlace(const RECT& place) {
  place_ = place;
  xcb_size_hints_t hints{};
  xcb_icccm_size_hints_set_position(&hints, 1, place.left, place.top);
  xcb_icccm_size_hints_set_size(&hints, 1, static_cast<int>(Side(place.right - place.left)),
                                static_cast<int>(Side(place.bottom - place.top)));
  xcb_icccm_size_hints_set_win_gravity(&hints, XCB_GRAVITY_STATIC);
  xcb_icccm_set_wm_normal_hints(connection_.get, id_, &hints);
  const std::uint32_t values[] = {static_cast<std::uint32_t>(place.left), static_cast<std::uint32_t>(place.top),
                                  Side(place.right - place.left), Side(place.bottom - place.top)};
  const auto cookie = xcb_configure_window(
      connection_.get, id_,
      XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, values);
  placed_at_ = static_cast<std::uint16_t>(cookie.sequence);
}

void X11Window::SetShape(const std::optional<RectSet>& shape) {
  if (!shape) {
    if (shaped_ && !layered_) xcb_shape_mask(connection_.get, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, id_, 0, 0, 0);
    shaped_ = false;
    shape_.clear();
    return;
  }
  if (shaped_ && SameShape(shape_, shape->rects())) return;
  std::vector<xcb_rectangle_t> rects;
  for (const RECT& rect : shape->rects()) rects.push_back(RectangleOf(rect));
  xcb_shape_rectangles(connection_.get, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, XCB_CLIP_ORDERING_UNSORTED, id_, 0, 0,
                       static_cast<std::uint32_t>(rects.size()), rects.data());
  shaped_ = true;
  shape_ = shape->rects();
}

// Rows of opaque pixels, one rectangle a run.
void X11Window::ShapeByAlpha(const Picture& picture) {
  std::vector<xcb_rectangle_t> runs;
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width;) {
      const int start = x;
      while (x < picture.width && picture.At(x, y)[3] >= kOpaqueFrom) ++x;
      if (x > start) runs.push_back(RectangleOf({start, y, x, y + 1}));
      if (x == start) ++x;
    }
  }
  xcb_shape_rectangles(connection_.get, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, XCB_CLIP_ORDERING_YX_SORTED, id_, 0, 0,
                       static_cast<std::uint32_t>(runs.size()), runs.data());
}

void X11Window::Iconify() {
  iconic_ = true;
  if (!managed_ || !connection_.HasManager()) {
    xcb_unmap_window(connection_.get, id_);
    mapped_ = false;
    return;
  }
  xcb_client_message_event_t ask{};
  ask.response_type = XCB_CLIENT_MESSAGE;
  ask.format = 32;
  ask.window = id_;
  ask.type = connection_.Atom("WM_CHANGE_STATE");
  ask.data.data32[0] = XCB_ICCCM_WM_STATE_ICONIC;
  xcb_send_event(connection_.get, 0, connection_.screen->root,
                 XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                 reinterpret_cast<const char*>(&ask));
}

void X11Window::Follow(const WindowInfo& info, const std::optional<RectSet>& shape) {
  const bool minimised = (info.style & WS_MINIMIZE) != 0;
  if (info.title != title_) SetTitle(info.title);
  if (!minimised && (!EqualRect(&info.place, &place_) || placed_at_ == 0)) SetPlace(info.place);
  if (!layered_) SetShape(shape);
  if (info.shown() && !minimised && (!mapped_ || iconic_)) {
    constexpr std::uint32_t kAbove[] = {XCB_STACK_MODE_ABOVE};
    if (!managed_) xcb_configure_window(connection_.get, id_, XCB_CONFIG_WINDOW_STACK_MODE, kAbove);
    xcb_map_window(connection_.get, id_);
    mapped_ = true;
    iconic_ = false;
  } else if (info.shown() && minimised && !iconic_) {
    Iconify();
  } else if (!info.shown() && mapped_) {
    // A manager has to hear of it even when it keeps the window unmapped as an icon (ICCCM 4.1.4).
    xcb_unmap_window(connection_.get, id_);
    xcb_unmap_notify_event_t gone{};
    gone.response_type = XCB_UNMAP_NOTIFY;
    gone.event = connection_.screen->root;
    gone.window = id_;
    xcb_send_event(connection_.get, 0, connection_.screen->root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&gone));
    mapped_ = false;
    iconic_ = false;
  }
  xcb_flush(connection_.get);
}

void X11Window::Show(const Picture& picture, const RECT& wanted) {
  const RECT all{0, 0, picture.width, picture.height};
  RECT part;
  if (!IntersectRect(&part, &wanted, &all)) return;
  if (layered_ && depth_ != 32) ShapeByAlpha(picture);
  const int width = part.right - part.left;
  const auto row_bytes = static_cast<std::size_t>(width) * 4;
  constexpr std::size_t kHead = 64;
  const std::size_t most = std::size_t{xcb_get_maximum_request_length(connection_.get)} * 4 - kHead;
  const int rows = std::max(1, static_cast<int>(most / row_bytes));
  std::vector<std::uint8_t> packed;
  for (int y = part.top; y < part.bottom; y += rows) {
    const int count = std::min<int>(rows, part.bottom - y);
    packed.resize(row_bytes * static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
      std::memcpy(packed.data() + row_bytes * static_cast<std::size_t>(i), picture.At(part.left, y + i), row_bytes);
    }
    xcb_put_image(connection_.get, XCB_IMAGE_FORMAT_Z_PIXMAP, id_, context_, static_cast<std::uint16_t>(width),
                  static_cast<std::uint16_t>(count), static_cast<std::int16_t>(part.left), static_cast<std::int16_t>(y),
                  0, depth_, static_cast<std::uint32_t>(packed.size()), packed.data());
  }
  xcb_flush(connection_.get);
}

void X11Window::Focus() {
  constexpr std::uint32_t kAbove[] = {XCB_STACK_MODE_ABOVE};
  xcb_configure_window(connection_.get, id_, XCB_CONFIG_WINDOW_STACK_MODE, kAbove);
  if (mapped_ && managed_) xcb_set_input_focus(connection_.get, XCB_INPUT_FOCUS_PARENT, id_, XCB_CURRENT_TIME);
  xcb_flush(connection_.get);
}

void X11Window::SetIcon(HICON icon) {
  const auto picture = icon == icon_ ? std::nullopt : PictureOf(icon);
  if (!picture || picture->bits.empty()) return;
  icon_ = icon;
  std::vector<std::uint32_t> data{static_cast<std::uint32_t>(picture->width),
                                  static_cast<std::uint32_t>(picture->height)};
  const std::size_t head = data.size();
  data.resize(head + picture->bits.size() / 4);
  std::memcpy(data.data() + head, picture->bits.data(), picture->bits.size());
  xcb_change_property(connection_.get, XCB_PROP_MODE_REPLACE, id_, connection_.Atom("_NET_WM_ICON"), XCB_ATOM_CARDINAL,
                      32, static_cast<std::uint32_t>(data.size()), data.data());
}

}  // namespace winhost
