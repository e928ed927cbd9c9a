#include <windows.h>

#include <sched.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <limits>
#include <thread>

#include "winhost/kernel/process_object.h"
#include "winhost/kernel/thread_object.h"
#include "winhost/kernel/waitable.h"
#include "winhost/machine/clock.h"

namespace winhost {
namespace {

DWORD Answer(int ended, DWORD milliseconds) {
  if (ended != kWaitTimedOut) return WAIT_OBJECT_0 + static_cast<DWORD>(ended);
  PassWaitedMs(milliseconds);
  return WAIT_TIMEOUT;
}

// A standing clock moves on at once, which leaves no time to threads that work meanwhile. They get it here, as much as
// they would have had and no more than a few seconds; it ends as soon as all of them wait or sleep themselves.
void LetOthersWork(DWORD milliseconds) {
  using namespace std::chrono;
  constexpr DWORD kMost = 3000;
  const auto end = steady_clock::now() + std::chrono::milliseconds(std::min(milliseconds, kMost));
  while (OtherWorkingThreads() > 0 && steady_clock::now() < end) std::this_thread::sleep_for(microseconds(200));
}

std::shared_ptr<KernelObject> ObjectToWaitFor(HANDLE handle) {
  if (handle == GetCurrentProcess()) return ThisProcess();
  return FindObject(handle);
}

}  // namespace
}  // namespace winhost

using namespace winhost;

DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds) {
  return WaitForMultipleObjects(1, &handle, FALSE, milliseconds);
}

DWORD WaitForMultipleObjects(DWORD count, const HANDLE* handles, BOOL all, DWORD milliseconds) {
  if (count == 0 || count > MAXIMUM_WAIT_OBJECTS || !handles) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return WAIT_FAILED;
  }
  std::array<std::shared_ptr<Waitable>, MAXIMUM_WAIT_OBJECTS> owners;
  std::array<Waitable*, MAXIMUM_WAIT_OBJECTS> objects;
  for (DWORD i = 0; i < count; ++i) {
    owners[i] = std::dynamic_pointer_cast<Waitable>(ObjectToWaitFor(handles[i]));
    objects[i] = owners[i].get();
    if (!objects[i]) {
      SetLastError(ERROR_INVALID_HANDLE);
      return WAIT_FAILED;
    }
  }
  return Answer(WaitForObjects({objects.data(), count}, all != FALSE, WaitNs(milliseconds)), milliseconds);
}

void Sleep(DWORD milliseconds) {
  if (milliseconds == INFINITE) WaitForObjects({}, false, UINT64_MAX);
  sched_yield();  // a standing clock would let a sleeping loop starve the thread it waits for
  if (milliseconds == 0) return;
  const Asleep asleep;
  if (MachineClockStands()) LetOthersWork(milliseconds);
  MachineSleepMs(milliseconds);
}
