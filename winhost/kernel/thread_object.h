// What stands behind a thread handle.
#pragma once

#include "winhost/kernel/waitable.h"

namespace winhost {

class Thread final : public Waitable {
 public:
  explicit Thread(bool suspended) : suspended_(suspended) {}
  bool Signalled() override { return ended_; }

  // Called on the thread itself: tells its id, then holds it back while it is suspended.
  void Begin(DWORD id);
  void End();
  void SetCode(DWORD code);
  // Waits for Begin.
  DWORD Id();
  DWORD Code();
  // The former suspend count.
  DWORD Resume();

 private:
  DWORD id_ = 0;
  DWORD code_ = 0x103;  // STILL_ACTIVE
  bool suspended_;
  bool ended_ = false;
};

// Threads made by CreateThread and _beginthreadex that have not ended.
int LiveThreads();
// Whether this thread is one of them.
bool OnMadeThread();
// How many of them neither wait nor sleep. Called by a thread that is Asleep or none of them.
int OtherWorkingThreads();

// Stands around a sleep; counts the calling thread out of those that work. Not nested.
class Asleep {
 public:
  Asleep();
  ~Asleep();
  Asleep(const Asleep&) = delete;
  Asleep& operator=(const Asleep&) = delete;
};

}  // namespace winhost
