// Keys as messages, and the calls about them.
#include "winhost/kernel/waitable.h"
#include "winhost/window/device_state.h"
#include "winhost/window/take_input.h"
#include "winhost/window/us_keyboard.h"
#include "winhost/window/window.h"

namespace winhost {
namespace {

constexpr LPARAM kContext = 1 << 29, kWasDown = 1 << 30, kGoesUp = LPARAM{1} << 31;

bool Down(const ThreadQueue& queue, int key) { return queue.keys[static_cast<std::size_t>(key)]; }

bool IsToggle(int key) { return key == VK_CAPITAL || key == VK_NUMLOCK || key == VK_SCROLL; }

LPARAM KeyDetails(const ThreadQueue& queue, const InputEvent& event) {
  const KeyRow* row = FindKey(event.data);
  LPARAM details = 1 | static_cast<LPARAM>(row ? row->scan : 0) << 16;
  if (Down(queue, VK_MENU) && event.data != VK_MENU) details |= kContext;
  if (Down(queue, event.data)) details |= kWasDown;
  if (event.message == WM_KEYUP) details |= kGoesUp;
  return details;
}

// With WaitLock held.
void Note(ThreadQueue& queue, const InputEvent& event) {
  const bool down = event.message == WM_KEYDOWN;
  const auto key = static_cast<std::size_t>(event.data);
  if (down && !queue.keys[key] && IsToggle(event.data)) queue.toggles[key] = !queue.toggles[key];
  queue.keys[key] = down;
  queue.key_character = down ? event.character : u'\0';
}

}  // namespace

std::optional<MSG> KeyMessage(ThreadQueue& queue, const InputEvent& event, bool remove) {
  std::scoped_lock lock(WaitLock());
  const HWND window = queue.focus ? queue.focus : queue.active;
  const bool alt = (Down(queue, VK_MENU) || event.data == VK_MENU) && !Down(queue, VK_CONTROL);
  // Without a focus all keys are the system's.
  const bool system = alt || event.data == VK_F10 || !queue.focus;
  MSG made{window, event.message, static_cast<WPARAM>(event.data), KeyDetails(queue, event), event.time, event.point};
  if (system) made.message += WM_SYSKEYDOWN - WM_KEYDOWN;
  if (remove) Note(queue, event);
  if (!window) return std::nullopt;
  made.pt = TheDevices().pointer;
  return made;
}

}  // namespace winhost

using namespace winhost;

BOOL TranslateMessage(const MSG* message) {
  if (!message || message->message < WM_KEYFIRST || message->message > WM_KEYLAST) return FALSE;
  const bool system = message->message == WM_SYSKEYDOWN;
  if (message->message != WM_KEYDOWN && !system) return TRUE;
  const auto queue = ThreadQueue::Mine();
  std::scoped_lock lock(WaitLock());
  char16_t character = queue->key_character;
  if (character == 0) {
    character = CharacterOf(static_cast<int>(message->wParam), Down(*queue, VK_SHIFT), Down(*queue, VK_CONTROL),
                            queue->toggles[VK_CAPITAL]);
  }
  if (character == 0) return TRUE;
  MSG typed = *message;
  typed.message = system ? WM_SYSCHAR : WM_CHAR;
  typed.wParam = character;
  queue->posted.push_front(typed);  // before what was posted after the key
  return TRUE;
}

SHORT GetKeyState(int key) {
  if (key < 0 || key > 255) return 0;
  const auto queue = ThreadQueue::Mine();
  std::scoped_lock lock(WaitLock());
  const int down = Down(*queue, key) ? 0xFF80 : 0;
  return static_cast<SHORT>(down | (queue->toggles[static_cast<std::size_t>(key)] ? 1 : 0));
}

SHORT GetAsyncKeyState(int key) {
  if (key < 0 || key > 255) return 0;
  std::scoped_lock lock(WaitLock());
  DeviceState& devices = TheDevices();
  const auto index = static_cast<std::size_t>(key);
  const int state = (devices.keys[index] ? 0x8000 : 0) | (devices.pressed_since[index] ? 1 : 0);
  devices.pressed_since[index] = false;
  return static_cast<SHORT>(state);
}
