// Objects that a thread can wait for, all under one lock of the process: waits for several objects, and for messages
// beside them, need to look at all of them at one moment.
#pragma once

#include <functional>
#include <mutex>
#include <span>

#include "winhost/kernel/object.h"

namespace winhost {

class Waitable : public KernelObject {
 public:
  bool Wait(std::uint64_t real_ns) final;
  // Both are called with WaitLock held.
  virtual bool Signalled() = 0;
  virtual void Consume() {}
  // Whether the signal comes from outside of this process and has to be asked for again and again.
  virtual bool Polled() const { return false; }
};

// Guards the state of every Waitable. Never held while calling out of winhost.
std::mutex& WaitLock();
// After a change under the lock that may end a wait.
void WakeWaiters();
// Made threads that wait for something that has not come.
int SettledThreads();

constexpr int kWaitTimedOut = -1;
// Waits until one object (or, with `all`, every one) is signalled and consumes what ended the wait; or until `also`,
// asked under the lock, says yes. The index of the object (0 with `all`), the number of objects for `also`, or
// kWaitTimedOut. `real_ns` as KernelObject::Wait takes it.
int WaitForObjects(std::span<Waitable* const> objects, bool all, std::uint64_t real_ns,
                   const std::function<bool()>& also = {});

// The real time a wait of `milliseconds` of the machine may take; INFINITE is for ever.
std::uint64_t WaitNs(DWORD milliseconds);

}  // namespace winhost
