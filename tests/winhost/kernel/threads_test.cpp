#include <process.h>
#include <windows.h>

#include <array>
#include <chrono>

#include "tests/support/machine_fixture.h"

namespace {

constexpr const char* kStandingClock = R"({"clock": {"at": "2024-03-05T14:07:09", "stands": true}})";
constexpr DWORD kHour = 3'600'000;

struct Closed {
  explicit Closed(HANDLE made) : handle(made) {}
  ~Closed() { CloseHandle(handle); }
  operator HANDLE() const { return handle; }
  HANDLE handle;
};

class ThreadsTest : public testing_support::OnMachine {
 protected:
  ThreadsTest() { Start(kStandingClock); }
};

DWORD WINAPI ReturnArgument(LPVOID argument) { return static_cast<DWORD>(reinterpret_cast<UINT_PTR>(argument)); }

TEST_F(ThreadsTest, ExitCodeIsWhatTheThreadReturned) {
  DWORD id = 0, code = 0;
  const Closed thread(CreateThread(nullptr, 0, ReturnArgument, reinterpret_cast<LPVOID>(UINT_PTR{42}), 0, &id));
  EXPECT_EQ(WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);
  EXPECT_TRUE(GetExitCodeThread(thread, &code));
  EXPECT_EQ(code, 42u);
  EXPECT_NE(id, GetCurrentThreadId());
}

struct Unwound {
  ~Unwound() { *flag = true; }
  bool* flag;
};

unsigned EndInTheMiddle(void* flag) {
  const Unwound unwound{static_cast<bool*>(flag)};
  _endthreadex(7);
}

TEST_F(ThreadsTest, EndingInTheMiddleGivesTheCodeAndUnwinds) {
  bool unwound = false;
  DWORD code = 0;
  const Closed thread(reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, EndInTheMiddle, &unwound, 0, nullptr)));
  EXPECT_EQ(WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);
  EXPECT_TRUE(GetExitCodeThread(thread, &code));
  EXPECT_EQ(code, 7u);
  EXPECT_TRUE(unwound);
}

TEST_F(ThreadsTest, SuspendedThreadStartsWhenResumed) {
  const Closed thread(CreateThread(nullptr, 0, ReturnArgument, nullptr, CREATE_SUSPENDED, nullptr));
  EXPECT_EQ(WaitForSingleObject(thread, 10), DWORD{WAIT_TIMEOUT});
  EXPECT_EQ(ResumeThread(thread), 1u);
  EXPECT_EQ(WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);
}

TEST_F(ThreadsTest, PlannedFaultMakesNoThread) {
  Start(R"({"faults": [{"operation": "CreateThread", "error": 8}]})");
  EXPECT_EQ(CreateThread(nullptr, 0, ReturnArgument, nullptr, 0, nullptr), nullptr);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_NOT_ENOUGH_MEMORY});
}

TEST_F(ThreadsTest, AutomaticEventEndsOneWaitManualOneAll) {
  const Closed automatic(CreateEventW(nullptr, FALSE, TRUE, nullptr));
  EXPECT_EQ(WaitForSingleObject(automatic, 0), WAIT_OBJECT_0);
  EXPECT_EQ(WaitForSingleObject(automatic, 0), DWORD{WAIT_TIMEOUT});
  const Closed manual(CreateEventW(nullptr, TRUE, TRUE, nullptr));
  EXPECT_EQ(WaitForSingleObject(manual, 0), WAIT_OBJECT_0);
  EXPECT_EQ(WaitForSingleObject(manual, 0), WAIT_OBJECT_0);
  ResetEvent(manual);
  EXPECT_EQ(WaitForSingleObject(manual, 0), DWORD{WAIT_TIMEOUT});
}

TEST_F(ThreadsTest, EventWithANameIsRefused) {
  EXPECT_EQ(CreateEventW(nullptr, FALSE, FALSE, TEXT("shared")), nullptr);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_NOT_SUPPORTED});
}

TEST_F(ThreadsTest, SeveralObjectsAnyGivesTheFirstReadyAllConsumesTogether) {
  const Closed first(CreateEventW(nullptr, FALSE, FALSE, nullptr));
  const Closed second(CreateEventW(nullptr, FALSE, TRUE, nullptr));
  const HANDLE both[] = {first, second};
  EXPECT_EQ(WaitForMultipleObjects(2, both, TRUE, 0), DWORD{WAIT_TIMEOUT});
  EXPECT_EQ(WaitForMultipleObjects(2, both, FALSE, 0), WAIT_OBJECT_0 + 1);  // the failed wait for all took nothing
  SetEvent(first);
  SetEvent(second);
  EXPECT_EQ(WaitForMultipleObjects(2, both, TRUE, INFINITE), WAIT_OBJECT_0);
  EXPECT_EQ(WaitForMultipleObjects(2, both, FALSE, 0), DWORD{WAIT_TIMEOUT});
}

TEST_F(ThreadsTest, WaitingForWhatCannotBeWaitedForFails) {
  EXPECT_EQ(WaitForSingleObject(nullptr, 0), WAIT_FAILED);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_HANDLE});
  EXPECT_EQ(WaitForMultipleObjects(0, nullptr, FALSE, 0), WAIT_FAILED);
}

TEST_F(ThreadsTest, HoursOnAStandingClockCostNoTime) {
  const auto before = std::chrono::steady_clock::now();
  const DWORD ticks = GetTickCount();
  const Closed never(CreateEventW(nullptr, FALSE, FALSE, nullptr));
  Sleep(kHour);
  EXPECT_EQ(WaitForSingleObject(never, kHour), DWORD{WAIT_TIMEOUT});
  EXPECT_EQ(GetTickCount() - ticks, 2 * kHour);
  EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::minutes(10));
}

struct Counter {
  CRITICAL_SECTION section;
  int value = 0;
};

unsigned CountUp(void* argument) {
  auto* const counter = static_cast<Counter*>(argument);
  for (int i = 0; i < 2000; ++i) {
    EnterCriticalSection(&counter->section);
    EnterCriticalSection(&counter->section);
    ++counter->value;
    LeaveCriticalSection(&counter->section);
    LeaveCriticalSection(&counter->section);
  }
  return 0;
}

TEST_F(ThreadsTest, CriticalSectionKeepsThreadsApartAndLetsItsOwnerInAgain) {
  Counter counter;
  InitializeCriticalSection(&counter.section);
  std::array<HANDLE, 4> threads;
  for (HANDLE& thread : threads) {
    thread = reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, CountUp, &counter, 0, nullptr));
  }
  EXPECT_EQ(WaitForMultipleObjects(4, threads.data(), TRUE, INFINITE), WAIT_OBJECT_0);
  for (HANDLE thread : threads) CloseHandle(thread);
  EXPECT_EQ(counter.value, 8000);
  DeleteCriticalSection(&counter.section);
}

unsigned TryToEnter(void* section) {
  return static_cast<unsigned>(TryEnterCriticalSection(static_cast<LPCRITICAL_SECTION>(section)));
}

TEST_F(ThreadsTest, TryEnterDoesNotWaitForAnotherOwner) {
  CRITICAL_SECTION section;
  ASSERT_TRUE(InitializeCriticalSectionAndSpinCount(&section, 4000));
  EnterCriticalSection(&section);
  const Closed thread(reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, TryToEnter, &section, 0, nullptr)));
  DWORD entered = TRUE;
  WaitForSingleObject(thread, INFINITE);
  GetExitCodeThread(thread, &entered);
  EXPECT_EQ(entered, DWORD{FALSE});
  LeaveCriticalSection(&section);
  DeleteCriticalSection(&section);
}

unsigned ReadSlot(void* slot) { return TlsGetValue(*static_cast<DWORD*>(slot)) ? 1 : 0; }

TEST_F(ThreadsTest, SlotsAreTheThreadsOwnAndStartEmptyEachTime) {
  int value = 0;
  DWORD slot = TlsAlloc();
  EXPECT_TRUE(TlsSetValue(slot, &value));
  EXPECT_EQ(TlsGetValue(slot), &value);
  const Closed other(reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, ReadSlot, &slot, 0, nullptr)));
  DWORD seen = 1;
  WaitForSingleObject(other, INFINITE);
  GetExitCodeThread(other, &seen);
  EXPECT_EQ(seen, 0u);
  EXPECT_TRUE(TlsFree(slot));
  EXPECT_FALSE(TlsSetValue(slot, &value));
  EXPECT_EQ(TlsAlloc(), slot);
  EXPECT_EQ(TlsGetValue(slot), nullptr);
}

TEST_F(ThreadsTest, HeapBlocksAreKnownByTheirHandles) {
  const HLOCAL block = LocalAlloc(LPTR, 100);
  EXPECT_EQ(LocalSize(block), SIZE_T{100});
  EXPECT_EQ(static_cast<BYTE*>(block)[99], 0);
  EXPECT_EQ(LocalFree(block), nullptr);
  EXPECT_EQ(LocalFree(block), block);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_HANDLE});
  EXPECT_EQ(LocalAlloc(LPTR, SIZE_MAX), nullptr);
}

TEST_F(ThreadsTest, MovableBlockIsUsedWhileLocked) {
  const HGLOBAL block = GlobalAlloc(GHND, 16);
  void* const memory = GlobalLock(block);
  EXPECT_NE(memory, block);
  static_cast<BYTE*>(memory)[15] = 1;
  EXPECT_FALSE(GlobalUnlock(block));
  EXPECT_EQ(GetLastError(), DWORD{NO_ERROR});
  EXPECT_FALSE(GlobalUnlock(block));
  EXPECT_EQ(GetLastError(), DWORD{ERROR_NOT_LOCKED});
  EXPECT_EQ(GlobalFree(block), nullptr);
}

}  // namespace
