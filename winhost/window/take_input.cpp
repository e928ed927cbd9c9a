#include "winhost/window/take_input.h"

#include <algorithm>

#include "winhost/kernel/waitable.h"
#include "winhost/window/tracking.h"

namespace winhost {
namespace {

std::optional<MSG> MessageOf(ThreadQueue& queue, const InputEvent& event, bool remove) {
  switch (event.kind) {
    case InputKind::Mouse:
      return MouseMessage(queue, event, remove);
    case InputKind::Key:
      return KeyMessage(queue, event, remove);
    case InputKind::Touch:
      return TouchMessage(queue, event, remove);
    case InputKind::Gone:
      PointerLeft(queue);
      return std::nullopt;
  }
  return std::nullopt;
}

// Takes the event at `index` out, so that a window that looks for messages while it is asked does not find it again.
std::optional<InputEvent> Pull(ThreadQueue& queue, std::size_t index) {
  std::scoped_lock lock(WaitLock());
  queue.input_news = false;
  if (index >= queue.input.size()) return std::nullopt;
  const auto at = queue.input.begin() + static_cast<std::ptrdiff_t>(index);
  const InputEvent event = *at;
  queue.input.erase(at);
  return event;
}

void PutBack(ThreadQueue& queue, std::size_t index, const InputEvent& event) {
  std::scoped_lock lock(WaitLock());
  const auto at = static_cast<std::ptrdiff_t>(std::min(index, queue.input.size()));
  queue.input.insert(queue.input.begin() + at, event);
}

// Nothing is told to windows about input that stays where it is, or is not wanted.
bool Admitted(ThreadQueue& queue, const InputEvent& event, const MessageFilter& filter, MSG* message) {
  if (event.kind == InputKind::Gone) return true;
  const auto preview = MessageOf(queue, event, false);
  if (!preview) return true;  // for nobody: it goes away
  *message = *preview;
  return filter.Admits(*preview);
}

}  // namespace

bool TakeInput(ThreadQueue& queue, const MessageFilter& filter, bool remove, MSG* message) {
  std::size_t index = 0;
  while (const auto event = Pull(queue, index)) {
    MSG preview{};
    if (!Admitted(queue, *event, filter, &preview)) {
      PutBack(queue, index++, *event);
      continue;
    }
    if (!remove && preview.message != WM_NULL) {
      PutBack(queue, index, *event);
      *message = preview;
      return true;
    }
    const auto made = MessageOf(queue, *event, true);
    if (!made) continue;
    *message = *made;
    std::scoped_lock lock(WaitLock());
    queue.message_time = static_cast<LONG>(made->time);
    queue.message_point = static_cast<DWORD>(MAKELONG(made->pt.x, made->pt.y));
    return true;
  }
  return false;
}

}  // namespace winhost
