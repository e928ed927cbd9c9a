// A background thread that belongs to an object.
#pragma once

#include "base/unique.h"

namespace vanta {

class thread_base {
 public:
  thread_base() = default;
  virtual ~thread_base() = default;
  thread_base(const thread_base&) = delete;
  thread_base& operator=(const thread_base&) = delete;

 protected:
  // Starts the thread on Run; once an object. False when the system makes none.
  bool StartThread();
  // Waits until Run has returned, at once when the thread was never started. A class that starts a thread has made Run
  // return and called this before its own members go.
  void JoinThread();

  // On the thread.
  virtual void Run() = 0;

 private:
  static unsigned WINAPI Entry(void* self);

  UniqueHandle thread_;
};

}  // namespace vanta
