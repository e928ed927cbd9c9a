#include "winhost/window/thread_queue.h"

#include <algorithm>
#include <unordered_map>

#include "winhost/kernel/waitable.h"
#include "winhost/machine/clock.h"
#include "winhost/window/device_state.h"
#include "winhost/window/post_office.h"
#include "winhost/window/update.h"
#include "winhost/window/window.h"

namespace winhost {
namespace {

constexpr std::size_t kMostPosted = 10'000;

// Guarded by WaitLock.
std::unordered_map<DWORD, std::shared_ptr<ThreadQueue>>& Queues() {
  static auto* queues = new std::unordered_map<DWORD, std::shared_ptr<ThreadQueue>>;
  return *queues;
}

// To a sender in another process; one in this looks at the message itself.
void Answer(const SentMessage& message, LRESULT result) {
  if (!message.reply_to) return;
  const Packet reply{.kind = PacketKind::Reply, .lparam = result, .request = message.request};
  PostOffice::Current().Deliver(message.reply_to, reply);
}

// The end of a thread ends its queue: senders stop waiting, its windows are no more.
struct Owner {
  std::shared_ptr<ThreadQueue> queue;
  ~Owner() {
    if (!queue) return;
    std::deque<std::shared_ptr<SentMessage>> unheard;
    {
      std::scoped_lock lock(WaitLock());
      queue->ended = true;
      Queues().erase(queue->thread);
      unheard.swap(queue->sent);
      for (const auto& message : unheard) message->done = true;
    }
    WakeWaiters();
    for (const auto& message : unheard) Answer(*message, 0);
    DropWindowsOf(*queue);
  }
};

thread_local Owner t_owner;

LRESULT RunSent(const SentMessage& message) {
  if (!message.task) return CallWindow(message.window, message.message, message.wparam, message.lparam);
  message.task();
  return 0;
}

MSG TimerMessage(const WindowTimer& timer) {
  if (timer.message != WM_TIMER) return {timer.window, timer.message, 0, timer.point, 0, {}};
  return {timer.window, WM_TIMER, timer.id, reinterpret_cast<LPARAM>(timer.procedure), 0, {}};
}

}  // namespace

bool MessageFilter::Admits(const MSG& message) const {
  const HWND none = reinterpret_cast<HWND>(static_cast<LONG_PTR>(-1));
  if (window == none && message.hwnd) return false;
  if (window && window != none && message.hwnd != window) return false;
  return AdmitsNumber(message.message);
}

std::shared_ptr<ThreadQueue> ThreadQueue::Mine() {
  PostOffice::Current();
  if (!t_owner.queue) {
    t_owner.queue = std::make_shared<ThreadQueue>(GetCurrentThreadId());
    std::scoped_lock lock(WaitLock());
    Queues()[t_owner.queue->thread] = t_owner.queue;
  }
  return t_owner.queue;
}

std::shared_ptr<ThreadQueue> ThreadQueue::Of(DWORD thread) {
  const auto found = Queues().find(thread);
  return found == Queues().end() ? nullptr : found->second;
}

bool ThreadQueue::TakePosted(const MessageFilter& filter, bool remove, MSG* message) {
  const auto found = std::ranges::find_if(posted, [&](const MSG& waiting) { return filter.Admits(waiting); });
  if (found == posted.end()) return false;
  *message = *found;
  message_time = static_cast<LONG>(message->time);
  if (remove) posted.erase(found);
  return true;
}

bool ThreadQueue::TakeTimer(const MessageFilter& filter, bool remove, std::uint64_t now_ms, MSG* message) {
  WindowTimer* due = nullptr;
  for (WindowTimer& timer : timers) {
    if (timer.due_ms > now_ms || !filter.Admits(TimerMessage(timer))) continue;
    if (!due || timer.due_ms < due->due_ms) due = &timer;
  }
  if (!due) return false;
  *message = TimerMessage(*due);
  message->time = static_cast<DWORD>(now_ms);
  if (!remove) return true;
  if (due->message != WM_TIMER) {
    timers.erase(timers.begin() + (due - timers.data()));
    tracking.flags &= ~static_cast<DWORD>(TME_HOVER);
  } else {
    due->due_ms = now_ms + due->period_ms;  // ticks that nobody fetched are one
  }
  return true;
}

bool ThreadQueue::TakeLate(const MessageFilter& filter, bool remove, std::uint64_t now_ms, MSG* message) {
  if (quit) {
    *message = {nullptr, WM_QUIT, static_cast<WPARAM>(*quit), 0, static_cast<DWORD>(now_ms), {}};
    if (remove) quit.reset();
    return true;
  }
  if (const HWND window = WindowToPaint(*this, filter)) {
    *message = {window, WM_PAINT, 0, 0, static_cast<DWORD>(now_ms), {}};
    return true;
  }
  if (!TakeTimer(filter, remove, now_ms, message)) return false;
  message_time = static_cast<LONG>(message->time);
  return true;
}

bool ThreadQueue::HasNews(const MessageFilter& filter) const {
  if (!sent.empty() || quit || input_news || WindowToPaint(*this, filter)) return true;
  return std::ranges::any_of(posted, [&](const MSG& waiting) { return filter.Admits(waiting); });
}

std::optional<std::uint64_t> ThreadQueue::NextTimer(const MessageFilter& filter) const {
  std::optional<std::uint64_t> next;
  for (const WindowTimer& timer : timers) {
    if (filter.Admits(TimerMessage(timer))) next = std::min(next.value_or(timer.due_ms), timer.due_ms);
  }
  return next;
}

void ThreadQueue::Push(const InputEvent& event) {
  const auto moves = [](const InputEvent& each) {
    return (each.kind == InputKind::Mouse && each.message == WM_MOUSEMOVE) ||
           (each.kind == InputKind::Touch && each.message == WM_POINTERUPDATE);
  };
  if (!input.empty() && moves(input.back()) && moves(event) && input.back().kind == event.kind &&
      input.back().window == event.window && (event.kind == InputKind::Mouse || input.back().data == event.data)) {
    input.back() = event;
  } else if (input.size() < kMostPosted) {
    input.push_back(event);
  }
  input_news = true;
}

DWORD ThreadQueue::Post(const MSG& message) {
  if (ended) return ERROR_INVALID_WINDOW_HANDLE;
  if (posted.size() >= kMostPosted) return ERROR_NOT_ENOUGH_QUOTA;
  posted.push_back(message);
  return ERROR_SUCCESS;
}

DWORD ThreadQueue::Status(std::uint64_t now_ms) const {
  DWORD status = sent.empty() ? 0u : QS_SENDMESSAGE;
  if (!posted.empty() || quit) status |= QS_POSTMESSAGE | QS_ALLPOSTMESSAGE;
  if (!input.empty()) status |= QS_INPUT;
  if (WindowToPaint(*this, {})) status |= QS_PAINT;
  if (const auto next = NextTimer({}); next && *next <= now_ms) status |= QS_TIMER;
  return status;
}

// Keys are for whatever has the focus when they are fetched, so those that wait stay. A button that is let go over the
// window is let go all the same.
void ThreadQueue::ForgetInput(HWND window) {
  for (const InputEvent& event : input) {
    if (event.window != window || event.kind != InputKind::Mouse) continue;
    if (const int key = ButtonKey(event.message)) keys[static_cast<std::size_t>(key)] = IsButtonDown(event.message);
  }
  std::erase_if(input, [&](const InputEvent& event) { return event.window == window && event.kind != InputKind::Key; });
}

void ThreadQueue::Forget(HWND window) {
  std::erase_if(posted, [&](const MSG& message) { return message.hwnd == window; });
  std::erase_if(timers, [&](const WindowTimer& timer) { return timer.window == window; });
  ForgetInput(window);
  for (HWND* mark : {&active, &focus, &capture, &tracking.window, &last_click.window}) {
    if (*mark == window) *mark = nullptr;
  }
}

void RunOn(const std::shared_ptr<ThreadQueue>& queue, std::function<void()> task, bool wait) {
  if (queue->thread == GetCurrentThreadId()) {
    task();
    return;
  }
  const auto message = std::make_shared<SentMessage>();
  message->task = std::move(task);
  {
    std::scoped_lock lock(WaitLock());
    if (queue->ended) return;
    queue->sent.push_back(message);
  }
  WakeWaiters();
  if (wait) WaitWhileAnswering(*ThreadQueue::Mine(), INFINITE, [&] { return message->done; });
}

void RunSentMessages(ThreadQueue& queue) {
  for (;;) {
    std::shared_ptr<SentMessage> message;
    {
      std::scoped_lock lock(WaitLock());
      if (queue.sent.empty()) return;
      message = std::move(queue.sent.front());
      queue.sent.pop_front();
    }
    const LRESULT result = RunSent(*message);
    Answer(*message, result);
    {
      std::scoped_lock lock(WaitLock());
      message->result = result;
      message->done = true;
    }
    WakeWaiters();
  }
}

bool WaitWhileAnswering(ThreadQueue& queue, DWORD ms, const std::function<bool()>& also) {
  bool answered = false;
  const auto ready = [&] {
    answered = also();
    return answered || !queue.sent.empty();
  };
  for (;;) {
    RunSentMessages(queue);
    if (WaitForObjects({}, false, WaitNs(ms), ready) == kWaitTimedOut) return false;
    if (answered) return true;
  }
}

}  // namespace winhost
