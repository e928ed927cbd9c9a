// A thread's message queue: what was posted and sent to it, its timers. All of it is guarded by WaitLock().
#pragma once

#include <windows.h>

#include <array>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "winhost/window/input_event.h"
#include "winhost/window/packet.h"

namespace winhost {

// A message on its way to a window of another thread; its sender waits until `done`. With a task it is that, and not a
// message, which the thread runs.
struct SentMessage {
  HWND window = nullptr;
  UINT message = 0;
  WPARAM wparam = 0;
  LPARAM lparam = 0;
  bool done = false;
  LRESULT result = 0;
  pid_t reply_to = 0;  // a sender in another process; 0: one in this, or nobody
  std::uint64_t request = 0;
  std::function<void()> task;
};

struct WindowTimer {
  HWND window = nullptr;
  UINT_PTR id = 0;
  UINT period_ms = 0;
  std::uint64_t due_ms = 0;  // as MachineTicksMs counts
  TIMERPROC procedure = nullptr;
  UINT message = WM_TIMER;  // WM_MOUSEHOVER: comes once, with `point`
  LPARAM point = 0;
};

// What TrackMouseEvent asked for and has not got yet.
struct MouseTracking {
  HWND window = nullptr;
  DWORD flags = 0;
  DWORD hover_ms = 0;
  POINT hover_from{};
};

// The last press of a button: a second one near it, soon, is a double click.
struct LastClick {
  HWND window = nullptr;
  UINT message = 0;
  POINT point{};
  DWORD time = 0;
};

struct MessageFilter {
  HWND window = nullptr;     // null: all; (HWND)-1: those of no window
  UINT first = 0, last = 0;  // both 0: all

  bool Admits(const MSG& message) const;
  bool AdmitsNumber(UINT message) const { return (first == 0 && last == 0) || (message >= first && message <= last); }
};

class ThreadQueue {
 public:
  // The calling thread's, made on first use together with the process's post office.
  static std::shared_ptr<ThreadQueue> Mine();
  // Of a thread of this process; null when it has none. With WaitLock held.
  static std::shared_ptr<ThreadQueue> Of(DWORD thread);

  explicit ThreadQueue(DWORD thread_id) : thread(thread_id) {}

  // In the order of the system: what was posted comes before input (see take_input.h), this before what TakeLate finds:
  // WM_QUIT, then WM_PAINT, then a timer due by `now_ms`.
  bool TakePosted(const MessageFilter& filter, bool remove, MSG* message);
  bool TakeLate(const MessageFilter& filter, bool remove, std::uint64_t now_ms, MSG* message);
  // Whether there may be something other than a timer, or a message was sent.
  bool HasNews(const MessageFilter& filter) const;
  // When the next timer that the filter admits is due.
  std::optional<std::uint64_t> NextTimer(const MessageFilter& filter) const;
  // For input that has come: keeps the moves of one pointer to the last of them.
  void Push(const InputEvent& event);
  // ERROR_NOT_ENOUGH_QUOTA when 10,000 messages wait.
  DWORD Post(const MSG& message);
  // QS_… of what waits.
  DWORD Status(std::uint64_t now_ms) const;
  void Forget(HWND window);

  const DWORD thread;
  std::deque<MSG> posted;
  std::deque<std::shared_ptr<SentMessage>> sent;
  std::vector<WindowTimer> timers;
  std::optional<int> quit;
  UINT_PTR last_timer_id = 0;
  std::deque<InputEvent> input;
  bool input_news = false;  // came in since TakeInput last looked
  HWND active = nullptr;
  HWND focus = nullptr;
  HWND capture = nullptr;
  MouseTracking tracking;
  LastClick last_click;
  std::array<bool, 256> keys{};  // held, as the messages that were fetched tell it
  std::array<bool, 256> toggles{};
  char16_t key_character = 0;  // of the key press fetched last, if its device knew
  LONG message_time = 0;
  DWORD message_point = 0;
  bool ended = false;  // its thread is gone; nothing more is accepted

 private:
  void ForgetInput(HWND window);
  bool TakeTimer(const MessageFilter& filter, bool remove, std::uint64_t now_ms, MSG* message);
};

// Runs the task on the queue's thread when that next looks for messages or waits for an answer; at once, and before
// this returns, when that is the calling thread. With `wait` this returns when it has run (or the thread has ended).
void RunOn(const std::shared_ptr<ThreadQueue>& queue, std::function<void()> task, bool wait);

// Runs what other threads have sent to the calling thread's windows.
void RunSentMessages(ThreadQueue& queue);
// Waits, at most `ms` of the machine's time (INFINITE: for ever), until `also` says yes, while messages that are sent
// to this thread are run. False: timed out. `also` is asked with WaitLock held.
bool WaitWhileAnswering(ThreadQueue& queue, DWORD ms, const std::function<bool()>& also);

}  // namespace winhost
