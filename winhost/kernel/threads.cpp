#include <process.h>
#include <windows.h>

#include <limits.h>
#include <pthread.h>
#include <sched.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <memory>

#include "winhost/kernel/thread_object.h"
#include "winhost/machine/faults.h"

namespace winhost {
namespace {

std::atomic<int> g_live{0};
std::atomic<int> g_asleep{0};  // of the live ones
thread_local Thread* t_thread = nullptr;

void WaitFor(const std::function<bool()>& ready) { WaitForObjects({}, false, UINT64_MAX, ready); }

struct Start {
  std::shared_ptr<Thread> thread;
  std::function<DWORD()> body;
};

// ExitThread unwinds the stack, so the thread's end is told by a destructor.
struct Ending {
  ~Ending() {
    t_thread = nullptr;
    --g_live;
    thread->End();
  }
  std::shared_ptr<Thread> thread;
};

void* ThreadMain(void* parameter) {
  std::unique_ptr<Start> start(static_cast<Start*>(parameter));
  const Ending ending{start->thread};
  t_thread = ending.thread.get();
  t_thread->Begin(GetCurrentThreadId());
  t_thread->SetCode(start->body());
  return nullptr;
}

int StartDetached(std::unique_ptr<Start> start, SIZE_T stack_bytes) {
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setdetachstate(&attributes, PTHREAD_CREATE_DETACHED);
  std::size_t usual = 0;
  pthread_attr_getstacksize(&attributes, &usual);
  if (stack_bytes > usual) pthread_attr_setstacksize(&attributes, (stack_bytes + 0xFFFF) & ~SIZE_T{0xFFFF});
  pthread_t id;
  ++g_live;
  const int failed = pthread_create(&id, &attributes, &ThreadMain, start.get());
  pthread_attr_destroy(&attributes);
  if (failed) {
    --g_live;
  } else {
    static_cast<void>(start.release());  // ThreadMain's now
  }
  return failed;
}

HANDLE MakeThread(std::function<DWORD()> body, SIZE_T stack_bytes, DWORD flags, DWORD* thread_id) {
  if (const auto error = PlannedFault("CreateThread")) {
    SetLastError(*error);
    return nullptr;
  }
  auto thread = std::make_shared<Thread>((flags & CREATE_SUSPENDED) != 0);
  if (StartDetached(std::make_unique<Start>(Start{thread, std::move(body)}), stack_bytes) != 0) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
  }
  if (thread_id) *thread_id = thread->Id();
  return MakeHandle(std::move(thread));
}

std::shared_ptr<Thread> ThreadOf(HANDLE handle) {
  auto thread = ObjectAs<Thread>(handle);
  if (!thread) SetLastError(ERROR_INVALID_HANDLE);
  return thread;
}

}  // namespace

void Thread::Begin(DWORD id) {
  {
    std::scoped_lock lock(WaitLock());
    id_ = id;
  }
  WakeWaiters();
  WaitFor([this] { return !suspended_; });
}

void Thread::End() {
  {
    std::scoped_lock lock(WaitLock());
    ended_ = true;
  }
  WakeWaiters();
}

void Thread::SetCode(DWORD code) {
  std::scoped_lock lock(WaitLock());
  code_ = code;
}

DWORD Thread::Id() {
  DWORD id = 0;
  WaitFor([&] { return (id = id_) != 0; });
  return id;
}

DWORD Thread::Code() {
  std::scoped_lock lock(WaitLock());
  return ended_ ? code_ : STILL_ACTIVE;
}

DWORD Thread::Resume() {
  DWORD was = 0;
  {
    std::scoped_lock lock(WaitLock());
    was = suspended_ ? 1 : 0;
    suspended_ = false;
  }
  WakeWaiters();
  return was;
}

int LiveThreads() { return g_live; }
bool OnMadeThread() { return t_thread != nullptr; }
int OtherWorkingThreads() { return g_live - SettledThreads() - g_asleep; }

Asleep::Asleep() {
  if (t_thread) ++g_asleep;
}

Asleep::~Asleep() {
  if (t_thread) --g_asleep;
}

}  // namespace winhost

using namespace winhost;

HANDLE CreateThread(LPSECURITY_ATTRIBUTES, SIZE_T stack_bytes, LPTHREAD_START_ROUTINE start, LPVOID argument,
                    DWORD flags, LPDWORD thread_id) {
  return MakeThread([=] { return start(argument); }, stack_bytes, flags, thread_id);
}

std::uintptr_t _beginthreadex(void*, unsigned stack_bytes, unsigned (*start)(void*), void* argument, unsigned flags,
                              unsigned* thread_id) {
  return reinterpret_cast<std::uintptr_t>(MakeThread([=] { return start(argument); }, stack_bytes, flags, thread_id));
}

void ExitThread(DWORD code) {
  if (t_thread) t_thread->SetCode(code);
  pthread_exit(nullptr);
}

void _endthreadex(unsigned code) { ExitThread(code); }

BOOL GetExitCodeThread(HANDLE handle, LPDWORD code) {
  const auto thread = ThreadOf(handle);
  if (thread) *code = thread->Code();
  return thread != nullptr;
}

DWORD ResumeThread(HANDLE handle) {
  const auto thread = ThreadOf(handle);
  return thread ? thread->Resume() : static_cast<DWORD>(-1);
}

DWORD GetCurrentThreadId() {
  thread_local const auto id = static_cast<DWORD>(syscall(SYS_gettid));
  return id;
}

BOOL SwitchToThread() { return sched_yield() == 0; }
