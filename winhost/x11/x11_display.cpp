#include "winhost/x11/x11_display.h"

#include <xcb/xcb_icccm.h>

#include <cstdio>
#include <map>
#include <mutex>
#include <thread>

#include "winhost/kernel/waitable.h"
#include "winhost/window/activation.h"
#include "winhost/window/inject.h"
#include "winhost/window/place.h"
#include "winhost/window/screen.h"
#include "winhost/window/window.h"
#include "winhost/x11/connection.h"
#include "winhost/x11/x11_keyboard.h"
#include "winhost/x11/x11_window.h"

namespace winhost {
namespace {

// Set while a window follows the display, so that it is not told what it told.
thread_local bool t_following = false;

struct Following {
  Following() { t_following = true; }
  ~Following() { t_following = false; }
};

struct CursorRow {
  int number;
  std::uint16_t glyph;  // of the font "cursor"; the mask follows it
};
constexpr CursorRow kCursors[] = {{32512, 68},  {32513, 152}, {32514, 150}, {32515, 34}, {32642, 14}, {32643, 12},
                                  {32644, 108}, {32645, 116}, {32646, 52},  {32648, 0},  {32649, 60}};

bool HasChildren(HWND window) {
  return !WindowTable::Current()
              ->List([&](const WindowInfo& info) { return info.child() && info.parent == window; })
              .empty();
}

class X11Display final : public Display {
 public:
  X11Display() : keyboard_(connection_.Usable() ? connection_.get : nullptr) {}
  ~X11Display() override {
    if (!reader_.joinable()) return;
    TellReaderToStop();
    reader_.join();
  }

  // False with a line on standard error.
  bool Open() {
    if (!connection_.Usable()) {
      std::fprintf(stderr, "display: %s\n", connection_.why.c_str());
      return false;
    }
    delete_ = connection_.Atom("WM_DELETE_WINDOW");
    state_ = connection_.Atom("WM_STATE");
    font_ = xcb_generate_id(connection_.get);
    xcb_open_font(connection_.get, font_, 6, "cursor");
    mailbox_ = xcb_generate_id(connection_.get);
    xcb_create_window(connection_.get, XCB_COPY_FROM_PARENT, mailbox_, connection_.screen->root, -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    reader_ = std::thread([this] { Read(); });
    return true;
  }

  SIZE Size() override { return {connection_.screen->width_in_pixels, connection_.screen->height_in_pixels}; }

  void Changed(HWND handle) override {
    const auto info = WindowTable::Current()->Find(handle);
    const auto window = FindLocalWindow(handle);
    if (t_following || !info || !window || !info->top_level() || !Wanted(*info)) return;
    bool made = false;
    {
      std::scoped_lock lock(mutex_);
      auto& shown = windows_[handle];
      if (!shown) {
        if (!info->shown()) return;
        shown = std::make_unique<X11Window>(connection_, *info, IdOf(info->parent));
        made = true;
        if (cursor_) xcb_change_window_attributes(connection_.get, shown->id(), XCB_CW_CURSOR, &cursor_);
      }
      shown->SetIcon(window->icons[1] ? window->icons[1] : window->icons[0]);
      shown->Follow(*info, ShapeOf(*window));
    }
    if (made) Painted(handle, {0, 0, info->place.right - info->place.left, info->place.bottom - info->place.top});
  }

  void Painted(HWND handle, const RECT& part) override {
    const auto window = FindLocalWindow(handle);
    if (!window) return;
    std::shared_ptr<Picture> picture;
    {
      std::scoped_lock lock(WaitLock());
      picture = window->picture;
    }
    if (HasChildren(handle)) picture = std::make_shared<Picture>(screen::Snapshot(handle));
    std::scoped_lock lock(mutex_);
    const auto shown = windows_.find(handle);
    if (picture && shown != windows_.end() && shown->second) shown->second->Show(*picture, part);
  }

  void Ended(HWND handle) override {
    std::scoped_lock lock(mutex_);
    windows_.erase(handle);
  }

  void Activated(HWND handle) override {
    if (t_following) return;
    std::scoped_lock lock(mutex_);
    const auto shown = windows_.find(handle);
    if (shown != windows_.end() && shown->second) shown->second->Focus();
  }

  void ShowCursor(HCURSOR cursor) override {
    const auto number = static_cast<int>(reinterpret_cast<ULONG_PTR>(cursor)) - 0x10000;
    for (const CursorRow& row : kCursors) {
      if (row.number == number) SetGlyph(row.glyph);
    }
  }

  void Beep() override {
    xcb_bell(connection_.get, 0);
    xcb_flush(connection_.get);
  }

 private:
  // A window that only casts a shadow makes sense where its alpha does.
  bool Wanted(const WindowInfo& info) const {
    return !(info.ex_style & WS_EX_TRANSPARENT) || connection_.HasCompositor();
  }

  static std::optional<RectSet> ShapeOf(Window& window) {
    std::scoped_lock lock(WaitLock());
    return window.shape;
  }

  // With the mutex held.
  xcb_window_t IdOf(HWND handle) const {
    const auto found = windows_.find(handle);
    return found == windows_.end() || !found->second ? 0 : found->second->id();
  }
  HWND HandleOf(xcb_window_t id) {
    std::scoped_lock lock(mutex_);
    for (const auto& [handle, shown] : windows_) {
      if (shown && shown->id() == id) return handle;
    }
    return nullptr;
  }

  void SetGlyph(std::uint16_t glyph) {
    constexpr std::uint16_t kBlack = 0, kWhite = 0xFFFF;
    const xcb_cursor_t cursor = xcb_generate_id(connection_.get);
    xcb_create_glyph_cursor(connection_.get, cursor, font_, font_, glyph, glyph + 1, kBlack, kBlack, kBlack, kWhite,
                            kWhite, kWhite);
    std::scoped_lock lock(mutex_);
    for (const auto& [handle, shown] : windows_) {
      if (shown) xcb_change_window_attributes(connection_.get, shown->id(), XCB_CW_CURSOR, &cursor);
    }
    if (cursor_) xcb_free_cursor(connection_.get, cursor_);
    cursor_ = cursor;
    xcb_flush(connection_.get);
  }

  // Only xcb knows of all events: a thread that waits for a reply takes those before it off the socket, and nothing is
  // left there to poll for.
  void Read() {
    while (const Reply<xcb_generic_event_t> event{xcb_wait_for_event(connection_.get)}) {
      if (IsForMailbox(*event)) return;
      Handle(*event);
    }
  }

  bool IsForMailbox(const xcb_generic_event_t& event) const {
    return (event.response_type & 0x7F) == XCB_CLIENT_MESSAGE &&
           reinterpret_cast<const xcb_client_message_event_t&>(event).window == mailbox_;
  }

  // A message to a window goes to whom it belongs to. On a broken connection the reader has ended by itself.
  void TellReaderToStop() {
    xcb_client_message_event_t stop{};
    stop.response_type = XCB_CLIENT_MESSAGE;
    stop.format = 32;
    stop.window = mailbox_;
    stop.type = delete_;
    xcb_send_event(connection_.get, 0, mailbox_, 0, reinterpret_cast<const char*>(&stop));
    xcb_flush(connection_.get);
  }

  // Runs in the window's own thread, in its own time.
  static void OnThread(HWND handle, std::function<void()> task) {
    const auto window = FindLocalWindow(handle);
    if (window) RunOn(window->queue, std::move(task), false);
  }

  void Handle(const xcb_generic_event_t& event) {
    const auto* any = reinterpret_cast<const char*>(&event);
    switch (event.response_type & 0x7F) {
      case XCB_EXPOSE:
        return Exposed(*reinterpret_cast<const xcb_expose_event_t*>(any));
      case XCB_CONFIGURE_NOTIFY:
        return Configured(*reinterpret_cast<const xcb_configure_notify_event_t*>(any));
      case XCB_MOTION_NOTIFY:
        return Moved(*reinterpret_cast<const xcb_motion_notify_event_t*>(any));
      case XCB_ENTER_NOTIFY:
        return Entered(*reinterpret_cast<const xcb_enter_notify_event_t*>(any));
      case XCB_LEAVE_NOTIFY:
        if (reinterpret_cast<const xcb_leave_notify_event_t*>(any)->mode == XCB_NOTIFY_MODE_NORMAL) {
          InjectPointerGone();
        }
        return;
      case XCB_BUTTON_PRESS:
      case XCB_BUTTON_RELEASE:
        return Button(*reinterpret_cast<const xcb_button_press_event_t*>(any),
                      (event.response_type & 0x7F) == XCB_BUTTON_PRESS);
      case XCB_KEY_PRESS:
      case XCB_KEY_RELEASE:
        return Key(*reinterpret_cast<const xcb_key_press_event_t*>(any), (event.response_type & 0x7F) == XCB_KEY_PRESS);
      case XCB_FOCUS_IN:
      case XCB_FOCUS_OUT:
        return Focused(*reinterpret_cast<const xcb_focus_in_event_t*>(any),
                       (event.response_type & 0x7F) == XCB_FOCUS_IN);
      case XCB_PROPERTY_NOTIFY:
        return Property(*reinterpret_cast<const xcb_property_notify_event_t*>(any));
      case XCB_CLIENT_MESSAGE:
        return Asked(*reinterpret_cast<const xcb_client_message_event_t*>(any));
      case XCB_MAPPING_NOTIFY: {
        auto mapping = *reinterpret_cast<const xcb_mapping_notify_event_t*>(any);
        return keyboard_.Refresh(&mapping);
      }
      default:
        return;
    }
  }

  void Exposed(const xcb_expose_event_t& event) {
    const HWND handle = HandleOf(event.window);
    const RECT part{event.x, event.y, event.x + event.width, event.y + event.height};
    OnThread(handle, [this, handle, part] { Painted(handle, part); });
  }

  // The event's place is the frame's where a manager has put one around the window.
  void Configured(const xcb_configure_notify_event_t& event) {
    const HWND handle = HandleOf(event.window);
    if (!handle) return;
    const auto asked = xcb_translate_coordinates(connection_.get, event.window, connection_.screen->root, 0, 0);
    const Reply<xcb_translate_coordinates_reply_t> at(xcb_translate_coordinates_reply(connection_.get, asked, nullptr));
    if (!at) return;
    const RECT place{at->dst_x, at->dst_y, at->dst_x + event.width, at->dst_y + event.height};
    OnThread(handle, [this, handle, place, sequence = event.sequence] { FollowPlace(handle, place, sequence); });
  }

  void FollowPlace(HWND handle, const RECT& place, std::uint16_t sequence) {
    const auto info = WindowTable::Current()->Find(handle);
    // While it is dragged the window knows better than a display that is behind.
    if (!info || (info->style & WS_MINIMIZE) || !info->shown() || GetCapture() == handle) return;
    {
      std::scoped_lock lock(mutex_);
      const auto shown = windows_.find(handle);
      if (shown == windows_.end() || !shown->second || shown->second->Outdated(sequence)) return;
      shown->second->NotePlace(place);
    }
    if (EqualRect(&place, &info->place)) return;
    {
      const Following following;
      FollowDisplay(handle, place);
    }
    Changed(handle);  // what the window changed on hearing of it: its shape, say
  }

  void Moved(const xcb_motion_notify_event_t& event) {
    InjectMouse(HandleOf(event.event), WM_MOUSEMOVE, {event.root_x, event.root_y}, 0);
  }
  void Entered(const xcb_enter_notify_event_t& event) {
    InjectMouse(HandleOf(event.event), WM_MOUSEMOVE, {event.root_x, event.root_y}, 0);
  }

  void Button(const xcb_button_press_event_t& event, bool down) {
    constexpr int kLeft = 1, kMiddle = 2, kRight = 3, kWheelUp = 4, kWheelDown = 5;
    const POINT at{event.root_x, event.root_y};
    const HWND handle = HandleOf(event.event);
    switch (event.detail) {
      case kLeft:
        return InjectMouse(handle, down ? WM_LBUTTONDOWN : WM_LBUTTONUP, at, 0);
      case kMiddle:
        return InjectMouse(handle, down ? WM_MBUTTONDOWN : WM_MBUTTONUP, at, 0);
      case kRight:
        return InjectMouse(handle, down ? WM_RBUTTONDOWN : WM_RBUTTONUP, at, 0);
      case kWheelUp:
      case kWheelDown:
        if (down) InjectMouse(handle, WM_MOUSEWHEEL, at, event.detail == kWheelUp ? WHEEL_DELTA : -WHEEL_DELTA);
        return;
      default:
        return;
    }
  }

  void Key(const xcb_key_press_event_t& event, bool down) {
    const PressedKey pressed = keyboard_.Find(event.detail, event.state);
    if (pressed.key) InjectKey(pressed.key, down, down ? pressed.character : u'\0');
  }

  void Focused(const xcb_focus_in_event_t& event, bool in) {
    const bool grabs = event.mode == XCB_NOTIFY_MODE_GRAB || event.mode == XCB_NOTIFY_MODE_UNGRAB;
    if (grabs || event.detail == XCB_NOTIFY_DETAIL_INFERIOR || event.detail == XCB_NOTIFY_DETAIL_POINTER) return;
    const HWND handle = HandleOf(event.event);
    OnThread(handle, [handle, in] {
      const Following following;
      const auto table = WindowTable::Current();
      if (in) {
        if (table->Foreground() != handle) Activate(handle);
      } else if (table->Foreground() == handle) {
        table->SetForeground(nullptr);
        ActivateMine(nullptr, false);
      }
    });
  }

  void Property(const xcb_property_notify_event_t& event) {
    if (event.atom != state_) return;
    const HWND handle = HandleOf(event.window);
    const auto asked = xcb_get_property(connection_.get, 0, event.window, state_, state_, 0, 2);
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection_.get, asked, nullptr));
    if (!handle || !reply || xcb_get_property_value_length(reply.get()) < 4) return;
    const auto state = *static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    if (state == XCB_ICCCM_WM_STATE_WITHDRAWN) return;
    const bool iconic = state == XCB_ICCCM_WM_STATE_ICONIC;
    OnThread(handle, [this, handle, iconic] {
      {
        std::scoped_lock lock(mutex_);
        const auto shown = windows_.find(handle);
        if (shown == windows_.end() || !shown->second) return;
        shown->second->NoteIconic(iconic);
      }
      if ((IsIconic(handle) != FALSE) == iconic) return;
      {
        const Following following;
        ShowWindow(handle, iconic ? SW_SHOWMINNOACTIVE : SW_RESTORE);
      }
      Changed(handle);
    });
  }

  void Asked(const xcb_client_message_event_t& event) {
    const HWND handle = HandleOf(event.window);
    if (!handle || event.data.data32[0] != delete_ || !IsWindowEnabled(handle)) return;
    PostMessageW(handle, WM_SYSCOMMAND, SC_CLOSE, 0);
  }

  XConnection connection_;
  X11Keyboard keyboard_;
  xcb_atom_t delete_ = 0, state_ = 0;
  xcb_font_t font_ = 0;
  xcb_cursor_t cursor_ = 0;
  xcb_window_t mailbox_ = 0;  // never shown; a message to it ends the reader
  std::mutex mutex_;
  std::map<HWND, std::unique_ptr<X11Window>> windows_;
  std::thread reader_;
};

}  // namespace

std::unique_ptr<Display> OpenX11Display() {
  auto display = std::make_unique<X11Display>();
  return display->Open() ? std::move(display) : nullptr;
}

}  // namespace winhost
