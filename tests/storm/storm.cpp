// A process that ends while eight threads post a thousand reports: run under ThreadSanitizer it shows that the sender,
// its queue and its retries bear that. Half of the reports are tried again, on a clock that makes the minutes short.
#include <windows.h>

#include <process.h>

#include <atomic>

#include "report/stats/http_log.h"

namespace {

constexpr int kThreads = 8;
constexpr int kReports = 1000 / kThreads;
std::atomic<int> g_posted{0};

unsigned WINAPI Post(void*) {
  for (int i = 0; i < kReports; ++i) {
    if (vanta::CVantaHttpLog::Instance().PostStatus(TEXT("0"), i % 2 == 0)) ++g_posted;
    vanta::CVantaHttpLog::Instance().SetVersion(i % 3 ? TEXT("1.0") : TEXT("a much longer version text"));
  }
  return 0;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
  vanta::CVantaHttpLog::Instance().SetUseWinInet(true);
  for (int i = 0; i < kThreads; ++i) {
    CloseHandle(reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, Post, nullptr, 0, nullptr)));
  }
  // In the middle of it all, as a process that nobody waits for.
  while (g_posted < 300) SwitchToThread();
  vanta::CVantaHttpLog::Instance().WaitBeforeExit();
  return 0;
}
