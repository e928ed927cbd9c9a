// A thread's message loop with filters and idle work.
#pragma once

#include <windows.h>

#include <vector>

namespace vanta {

class MessageFilter {
 public:
  // Sees a message before it is translated and dispatched; true: it is dealt with.
  virtual bool PreTranslateMessage(MSG* message) = 0;

 protected:
  ~MessageFilter() = default;
};

class IdleHandler {
 public:
  // Called while the queue is empty.
  virtual void OnIdle() = 0;

 protected:
  ~IdleHandler() = default;
};

// Registered for its thread while it lives, so that windows made there can add filters and idle handlers. What is added
// must stay until it is removed. All calls on the loop's own thread.
class MessageLoop {
 public:
  MessageLoop();
  ~MessageLoop();
  MessageLoop(const MessageLoop&) = delete;
  MessageLoop& operator=(const MessageLoop&) = delete;

  // The loop that is registered for the calling thread, or none.
  static MessageLoop* Current();

  void AddFilter(MessageFilter* filter) { filters_.push_back(filter); }
  void RemoveFilter(MessageFilter* filter) { std::erase(filters_, filter); }
  void AddIdleHandler(IdleHandler* handler) { idle_handlers_.push_back(handler); }
  void RemoveIdleHandler(IdleHandler* handler) { std::erase(idle_handlers_, handler); }

  // Runs until WM_QUIT and gives its wParam. Idle handlers run once each time the queue becomes empty after a message
  // that may have changed something (mouse moves, paints and the caret's blinking do not count).
  WPARAM Run();

 private:
  bool PassFilters(MSG* message);
  void RunIdleHandlers();

  const DWORD thread_;
  std::vector<MessageFilter*> filters_;
  std::vector<IdleHandler*> idle_handlers_;
};

}  // namespace vanta
