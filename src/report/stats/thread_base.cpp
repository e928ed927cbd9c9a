#include "report/stats/thread_base.h"

#include <process.h>

namespace vanta {

bool thread_base::StartThread() {
  const uintptr_t thread = _beginthreadex(nullptr, 0, Entry, this, 0, nullptr);
  thread_.Reset(reinterpret_cast<HANDLE>(thread));
  return thread != 0;
}

void thread_base::JoinThread() {
  if (thread_) WaitForSingleObject(thread_.Get(), INFINITE);
}

unsigned WINAPI thread_base::Entry(void* self) {
  static_cast<thread_base*>(self)->Run();
  return 0;
}

}  // namespace vanta
