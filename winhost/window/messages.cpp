// Posting, sending and fetching messages.
#include <windows.h>

#include <unistd.h>

#include <algorithm>
#include <array>
#include <string>

#include "winhost/kernel/waitable.h"
#include "winhost/machine/clock.h"
#include "winhost/machine/faults.h"
#include "winhost/machine/text.h"
#include "winhost/window/device_state.h"
#include "winhost/window/post_office.h"
#include "winhost/window/take_input.h"
#include "winhost/window/window.h"

namespace winhost {
namespace {

BOOL Fail(DWORD error) {
  SetLastError(error);
  return FALSE;
}

DWORD Now() { return static_cast<DWORD>(MachineTicksMs()); }

// Puts a message into a queue of this process. The lock orders it with the thread's end.
BOOL PostHere(DWORD thread, const MSG& message, DWORD no_queue) {
  DWORD error = no_queue;
  {
    std::scoped_lock lock(WaitLock());
    if (const auto queue = ThreadQueue::Of(thread)) error = queue->Post(message);
  }
  if (error) return Fail(error);
  WakeWaiters();
  return TRUE;
}

Packet PacketOf(PacketKind kind, const WindowInfo& to, UINT message, WPARAM wparam, LPARAM lparam) {
  Packet packet{};
  packet.kind = kind;
  packet.thread = to.thread;
  packet.message = message;
  packet.time = Now();
  packet.window = reinterpret_cast<std::uintptr_t>(to.window);
  packet.wparam = wparam;
  packet.lparam = lparam;
  return packet;
}

BOOL PostTo(const WindowInfo& to, UINT message, WPARAM wparam, LPARAM lparam) {
  JournalPosted(to, message, wparam, lparam);
  if (to.process == getpid()) {
    return PostHere(to.thread, {to.window, message, wparam, lparam, Now(), {}}, ERROR_INVALID_WINDOW_HANDLE);
  }
  return PostOffice::Current().Deliver(to.process, PacketOf(PacketKind::Post, to, message, wparam, lparam));
}

std::vector<WindowInfo> BroadcastTargets() {
  return WindowTable::Current()->List(
      [](const WindowInfo& info) { return !info.message_only && !(info.style & WS_CHILD); });
}

// Null when there is no such queue any more.
std::shared_ptr<SentMessage> SendHere(const WindowInfo& to, UINT message, WPARAM wparam, LPARAM lparam) {
  auto sent = std::make_shared<SentMessage>(SentMessage{to.window, message, wparam, lparam, false, 0, 0, 0, {}});
  {
    std::scoped_lock lock(WaitLock());
    const auto queue = ThreadQueue::Of(to.thread);
    if (!queue || queue->ended) return nullptr;
    queue->sent.push_back(sent);
  }
  WakeWaiters();
  return sent;
}

// Real time: what is sent to this thread meanwhile is run, and does not count as the answer.
std::optional<LRESULT> AnswerWithin(ThreadQueue& mine, SentMessage& sent, std::uint64_t real_ns) {
  for (;;) {
    RunSentMessages(mine);
    const int ended = WaitForObjects({}, false, real_ns, [&] { return sent.done || !mine.sent.empty(); });
    std::scoped_lock lock(WaitLock());
    if (sent.done) return sent.result;
    if (ended == kWaitTimedOut) return std::nullopt;
  }
}

bool IsQueueWindow(HWND window) {
  return !window || window == reinterpret_cast<HWND>(static_cast<LONG_PTR>(-1)) || IsWindow(window);
}

// The machine's milliseconds until `due`, as a wait takes them.
DWORD Until(std::uint64_t due, std::uint64_t now) {
  return static_cast<DWORD>(std::min<std::uint64_t>(due > now ? due - now : 0, INFINITE - 1));
}

// On a standing clock time passes by waiting for it.
void PassUntil(std::uint64_t due) {
  const std::uint64_t now = MachineTicksMs();
  if (due > now) PassWaitedMs(Until(due, now));
}

// Waits until there is something for Take, or a message was sent.
void WaitForNews(ThreadQueue& queue, const MessageFilter& filter) {
  std::optional<std::uint64_t> timer;
  {
    std::scoped_lock lock(WaitLock());
    timer = queue.NextTimer(filter);
  }
  const DWORD ms = timer ? Until(*timer, MachineTicksMs()) : INFINITE;
  const auto news = [&] { return queue.HasNews(filter); };
  if (WaitForObjects({}, false, WaitNs(ms), news) == kWaitTimedOut && timer) PassUntil(*timer);
}

bool TryTake(ThreadQueue& queue, const MessageFilter& filter, bool remove, MSG* message) {
  RunSentMessages(queue);
  {
    std::scoped_lock lock(WaitLock());
    if (queue.TakePosted(filter, remove, message)) return true;
  }
  if (TakeInput(queue, filter, remove, message)) return true;
  const std::uint64_t now = MachineTicksMs();
  std::scoped_lock lock(WaitLock());
  if (queue.TakePosted(filter, remove, message)) return true;  // WM_MOUSELEAVE, when the pointer has gone
  if (!queue.TakeLate(filter, remove, now, message)) return false;
  message->pt = TheDevices().pointer;
  return true;
}

bool TimerCalls(const MSG& message) {
  const auto queue = ThreadQueue::Mine();
  std::scoped_lock lock(WaitLock());
  return std::ranges::any_of(queue->timers, [&](const WindowTimer& timer) {
    return timer.procedure && reinterpret_cast<LPARAM>(timer.procedure) == message.lParam;
  });
}

// Which process a thread of the machine belongs to; 0 when it is none with a window.
pid_t ProcessOfThread(DWORD thread) {
  const auto windows = WindowTable::Current()->List([&](const WindowInfo& info) { return info.thread == thread; });
  return windows.empty() ? 0 : windows.front().process;
}

}  // namespace
}  // namespace winhost

using namespace winhost;

BOOL PostMessageW(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (const auto error = PlannedFault("PostMessageW", Wide(std::to_string(message)))) return Fail(*error);
  if (!window) return PostThreadMessageW(GetCurrentThreadId(), message, wparam, lparam);
  if (window == HWND_BROADCAST) {
    for (const WindowInfo& to : BroadcastTargets()) PostTo(to, message, wparam, lparam);
    return TRUE;
  }
  const auto to = WindowTable::Current()->Find(window);
  return to ? PostTo(*to, message, wparam, lparam) : Fail(ERROR_INVALID_WINDOW_HANDLE);
}

BOOL PostThreadMessageW(DWORD thread, UINT message, WPARAM wparam, LPARAM lparam) {
  if (const auto error = PlannedFault("PostThreadMessageW", Wide(std::to_string(message)))) return Fail(*error);
  if (thread == GetCurrentThreadId()) ThreadQueue::Mine();
  const pid_t process = ProcessOfThread(thread);
  if (process == 0 || process == getpid()) {
    return PostHere(thread, {nullptr, message, wparam, lparam, Now(), {}}, ERROR_INVALID_THREAD_ID);
  }
  WindowInfo to;
  to.thread = thread;
  if (PostOffice::Current().Deliver(process, PacketOf(PacketKind::Post, to, message, wparam, lparam))) return TRUE;
  return Fail(ERROR_INVALID_THREAD_ID);
}

LRESULT SendMessageW(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (window == HWND_BROADCAST) {
    for (const WindowInfo& to : BroadcastTargets()) SendMessageW(to.window, message, wparam, lparam);
    return TRUE;
  }
  const auto to = WindowTable::Current()->Find(window);
  if (!to) return Fail(ERROR_INVALID_WINDOW_HANDLE);
  if (to->process != getpid()) {
    const auto packet = PacketOf(PacketKind::Send, *to, message, wparam, lparam);
    return PostOffice::Current().Ask(to->process, packet).value_or(0);
  }
  if (to->thread == GetCurrentThreadId()) return CallWindow(window, message, wparam, lparam);
  const auto mine = ThreadQueue::Mine();
  const auto sent = SendHere(*to, message, wparam, lparam);
  if (!sent) return Fail(ERROR_INVALID_WINDOW_HANDLE);
  WaitWhileAnswering(*mine, INFINITE, [&] { return sent->done; });
  std::scoped_lock lock(WaitLock());
  return sent->result;
}

LRESULT SendMessageTimeoutW(HWND window, UINT message, WPARAM wparam, LPARAM lparam, UINT, UINT milliseconds,
                            PDWORD_PTR result) {
  const auto to = WindowTable::Current()->Find(window);
  if (!to) return Fail(ERROR_INVALID_WINDOW_HANDLE);
  const std::uint64_t real_ns = std::uint64_t{milliseconds} * 1'000'000;
  std::optional<LRESULT> answer;
  if (to->process != getpid()) {
    answer = PostOffice::Current().Ask(to->process, PacketOf(PacketKind::Send, *to, message, wparam, lparam), real_ns);
  } else if (to->thread == GetCurrentThreadId()) {
    answer = CallWindow(window, message, wparam, lparam);
  } else {
    const auto mine = ThreadQueue::Mine();
    const auto sent = SendHere(*to, message, wparam, lparam);
    if (!sent) return Fail(ERROR_INVALID_WINDOW_HANDLE);
    answer = AnswerWithin(*mine, *sent, real_ns);
  }
  if (!answer) return Fail(ERROR_TIMEOUT);
  if (result) *result = static_cast<DWORD_PTR>(*answer);
  return TRUE;
}

BOOL SendNotifyMessageW(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  const auto to = WindowTable::Current()->Find(window);
  if (!to) return Fail(ERROR_INVALID_WINDOW_HANDLE);
  if (to->process != getpid()) {
    return PostOffice::Current().Deliver(to->process, PacketOf(PacketKind::Notify, *to, message, wparam, lparam));
  }
  if (to->thread == GetCurrentThreadId()) {
    CallWindow(window, message, wparam, lparam);
    return TRUE;
  }
  return SendHere(*to, message, wparam, lparam) ? TRUE : Fail(ERROR_INVALID_WINDOW_HANDLE);
}

BOOL GetMessageW(LPMSG message, HWND window, UINT first, UINT last) {
  if (!message || !IsQueueWindow(window)) {
    SetLastError(message ? ERROR_INVALID_WINDOW_HANDLE : ERROR_INVALID_PARAMETER);
    return -1;
  }
  const auto queue = ThreadQueue::Mine();
  const MessageFilter filter{window, first, last};
  while (!TryTake(*queue, filter, true, message)) WaitForNews(*queue, filter);
  return message->message != WM_QUIT;
}

BOOL PeekMessageW(LPMSG message, HWND window, UINT first, UINT last, UINT remove) {
  if (!message) return Fail(ERROR_INVALID_PARAMETER);
  if (!IsQueueWindow(window)) return Fail(ERROR_INVALID_WINDOW_HANDLE);
  return TryTake(*ThreadQueue::Mine(), {window, first, last}, (remove & PM_REMOVE) != 0, message);
}

BOOL WaitMessage() {
  const auto queue = ThreadQueue::Mine();
  MSG ignored;
  while (!TryTake(*queue, {}, false, &ignored)) WaitForNews(*queue, {});
  return TRUE;
}

LRESULT DispatchMessageW(const MSG* message) {
  if (!message) return 0;
  if (message->message == WM_TIMER && message->lParam) {
    if (!TimerCalls(*message)) return 0;
    reinterpret_cast<TIMERPROC>(message->lParam)(message->hwnd, WM_TIMER, message->wParam, Now());
    return 0;
  }
  return message->hwnd ? CallWindow(message->hwnd, message->message, message->wParam, message->lParam) : 0;
}

void PostQuitMessage(int exit_code) {
  const auto queue = ThreadQueue::Mine();
  std::scoped_lock lock(WaitLock());
  queue->quit = exit_code;
}

UINT RegisterWindowMessageW(LPCWSTR name) {
  const ATOM atom = name ? WindowTable::Current()->AtomOf(name) : 0;
  return atom ? atom : static_cast<UINT>(Fail(ERROR_INVALID_PARAMETER));
}

LONG GetMessageTime() {
  const auto queue = ThreadQueue::Mine();
  std::scoped_lock lock(WaitLock());
  return queue->message_time;
}

DWORD GetMessagePos() {
  const auto queue = ThreadQueue::Mine();
  std::scoped_lock lock(WaitLock());
  return queue->message_point;
}

DWORD GetQueueStatus(UINT flags) {
  const auto queue = ThreadQueue::Mine();
  const std::uint64_t now = MachineTicksMs();
  std::scoped_lock lock(WaitLock());
  const DWORD status = queue->Status(now) & flags;
  return static_cast<DWORD>(MAKELONG(status, status));
}

DWORD MsgWaitForMultipleObjects(DWORD count, const HANDLE* handles, BOOL all, DWORD milliseconds, DWORD wake_mask) {
  std::array<std::shared_ptr<Waitable>, MAXIMUM_WAIT_OBJECTS> owners;
  std::array<Waitable*, MAXIMUM_WAIT_OBJECTS> objects;
  if (count >= MAXIMUM_WAIT_OBJECTS || (count && !handles) || all) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return WAIT_FAILED;
  }
  for (DWORD i = 0; i < count; ++i) {
    owners[i] = ObjectAs<Waitable>(handles[i]);
    objects[i] = owners[i].get();
    if (!objects[i]) {
      SetLastError(ERROR_INVALID_HANDLE);
      return WAIT_FAILED;
    }
  }
  const auto queue = ThreadQueue::Mine();
  const std::uint64_t start = MachineTicksMs();
  const bool forever = milliseconds == INFINITE;
  for (;;) {
    const std::uint64_t now = MachineTicksMs();
    std::uint64_t end = forever ? UINT64_MAX : start + milliseconds;
    {
      std::scoped_lock lock(WaitLock());
      if (wake_mask & QS_TIMER) end = std::min(end, queue->NextTimer({}).value_or(UINT64_MAX));
    }
    const auto news = [&] { return (queue->Status(now) & wake_mask) != 0; };
    const DWORD ms = end == UINT64_MAX ? INFINITE : Until(end, now);
    const int ended = WaitForObjects({objects.data(), count}, false, WaitNs(ms), news);
    if (ended != kWaitTimedOut) return WAIT_OBJECT_0 + static_cast<DWORD>(ended);
    if (end != UINT64_MAX) PassUntil(end);
    if (!forever && MachineTicksMs() >= start + milliseconds) return WAIT_TIMEOUT;
  }
}
