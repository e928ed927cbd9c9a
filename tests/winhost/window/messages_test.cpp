#include <chrono>
#include <fstream>
#include <nlohmann/json.hpp>
#include <thread>

#include "tests/winhost/window/window_fixture.h"

namespace {

class MessagesTest : public testing_support::OnMachineWithWindows {
 protected:
  void Begin(std::string_view facts = R"({"clock": {"at": "2024-03-05T14:07:09", "stands": true}})") {
    Start(facts);
    Register();
    window_ = Create();
    Told().clear();
  }
  static std::vector<UINT> Drain() {
    std::vector<UINT> got;
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) got.push_back(message.message);
    return got;
  }
  HWND window_ = nullptr;
};

TEST_F(MessagesTest, PostedComeInOrderAndQuitAfterThem) {
  Begin();
  PostQuitMessage(3);
  PostMessageW(window_, WM_USER + 1, 1, 2);
  PostMessageW(nullptr, WM_USER + 2, 0, 0);
  MSG message;
  ASSERT_EQ(GetMessageW(&message, nullptr, 0, 0), TRUE);
  EXPECT_EQ(message.message, WM_USER + 1u);
  EXPECT_EQ(message.lParam, 2);
  EXPECT_EQ(message.hwnd, window_);
  ASSERT_EQ(GetMessageW(&message, nullptr, 0, 0), TRUE);
  EXPECT_EQ(message.hwnd, nullptr);
  EXPECT_EQ(GetMessageW(&message, nullptr, 0, 0), FALSE);
  EXPECT_EQ(message.wParam, 3u);
  EXPECT_TRUE(Drain().empty());
}

TEST_F(MessagesTest, FiltersPassOthersOver) {
  Begin();
  const HWND other = Create();
  PostMessageW(other, WM_USER + 1, 0, 0);
  PostMessageW(window_, WM_USER + 2, 0, 0);
  PostMessageW(window_, WM_USER + 3, 0, 0);
  MSG message;
  EXPECT_TRUE(PeekMessageW(&message, window_, WM_USER + 3, WM_USER + 9, PM_NOREMOVE));
  EXPECT_TRUE(PeekMessageW(&message, window_, WM_USER + 3, WM_USER + 9, PM_REMOVE));
  EXPECT_FALSE(PeekMessageW(&message, window_, WM_USER + 3, WM_USER + 9, PM_REMOVE));
  EXPECT_TRUE(PeekMessageW(&message, window_, 0, 0, PM_REMOVE));
  EXPECT_EQ(message.message, WM_USER + 2u);
  DestroyWindow(other);
  EXPECT_TRUE(Drain().empty());  // a window takes its messages with it
}

TEST_F(MessagesTest, DeadWindowsAndFullQueuesRefuse) {
  Begin();
  EXPECT_FALSE(PostMessageW(reinterpret_cast<HWND>(12), WM_USER, 0, 0));
  EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_WINDOW_HANDLE});
  EXPECT_FALSE(PostThreadMessageW(1, WM_USER, 0, 0));
  EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_THREAD_ID});
  MSG message;
  EXPECT_EQ(GetMessageW(&message, reinterpret_cast<HWND>(12), 0, 0), -1);
  for (int i = 0; i < 10'000; ++i) ASSERT_TRUE(PostMessageW(window_, WM_APP, 0, 0));
  EXPECT_FALSE(PostMessageW(window_, WM_APP, 0, 0));
  EXPECT_EQ(GetLastError(), DWORD{ERROR_NOT_ENOUGH_QUOTA});
}

TEST_F(MessagesTest, AnotherThreadPostsAndSends) {
  Begin();
  LRESULT answer = 0;
  std::thread sender([&] {
    PostMessageW(window_, WM_USER + 1, 0, 0);
    answer = SendMessageW(window_, WM_USER + 7, 40, 2);
    PostMessageW(window_, WM_USER + 2, 0, 0);
  });
  MSG message;
  do {
    ASSERT_EQ(GetMessageW(&message, nullptr, 0, 0), TRUE);
    DispatchMessageW(&message);
  } while (message.message != WM_USER + 2);
  sender.join();
  EXPECT_EQ(answer, 42);
  EXPECT_TRUE(WasTold(WM_USER + 1) && WasTold(WM_USER + 7) && WasTold(WM_USER + 2));
}

TEST_F(MessagesTest, TwoThreadsMaySendToEachOther) {
  Begin();
  HWND other = nullptr;
  LRESULT there = 0;
  std::atomic<bool> ready = false;
  std::thread peer([&] {
    other = Create();
    ready = true;
    there = SendMessageW(window_, WM_USER + 7, 1, 1);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  });
  while (!ready) std::this_thread::yield();
  EXPECT_EQ(SendMessageW(other, WM_USER + 7, 2, 2), 4);
  PostThreadMessageW(GetWindowThreadProcessId(other, nullptr), WM_QUIT, 0, 0);
  Drain();
  peer.join();
  EXPECT_EQ(there, 2);
  EXPECT_FALSE(IsWindow(other));  // it went with its thread
}

TEST_F(MessagesTest, WhatProgramsAgreeOnIsJournalled) {
  Begin();
  PostMessageW(window_, WM_USER + 1001, 0, -1);
  PostMessageW(window_, WM_CLOSE, 0, 0);
  PostMessageW(window_, WM_APP + 1, 0, 0);
  std::ifstream journal(folder_ / "messages.jsonl");
  std::string line, more;
  ASSERT_TRUE(std::getline(journal, line));
  const auto entry = nlohmann::json::parse(line);
  EXPECT_EQ(entry["class"], "RecorderWnd");
  EXPECT_EQ(entry["message"], 2025);
  EXPECT_EQ(entry["lParam"], -1);
  EXPECT_FALSE(std::getline(journal, more));
}

TEST_F(MessagesTest, TimersFollowAStandingClockInOrder) {
  Begin();
  SetTimer(window_, 1, 60'000, nullptr);
  SetTimer(window_, 2, 25'000, nullptr);
  std::vector<WPARAM> fired;
  MSG message;
  const DWORD start = GetTickCount();
  while (fired.size() < 4) {
    ASSERT_EQ(GetMessageW(&message, nullptr, 0, 0), TRUE);
    fired.push_back(message.wParam);
  }
  EXPECT_EQ(fired, (std::vector<WPARAM>{2, 2, 1, 2}));
  EXPECT_EQ(GetTickCount() - start, 75'000u);
  EXPECT_TRUE(KillTimer(window_, 2));
  EXPECT_FALSE(KillTimer(window_, 2));
  EXPECT_EQ(SetTimer(reinterpret_cast<HWND>(12), 1, 10, nullptr), 0u);
}

UINT_PTR g_called = 0;
void CALLBACK OnTimer(HWND, UINT message, UINT_PTR id, DWORD) { g_called = message == WM_TIMER ? id : 0; }

TEST_F(MessagesTest, ATimersProcedureIsCalled) {
  Begin(R"({"clock": {"speed": 1000}})");
  const UINT_PTR id = SetTimer(nullptr, 0, 2'000, OnTimer);
  MSG message;
  ASSERT_EQ(GetMessageW(&message, nullptr, 0, 0), TRUE);
  KillTimer(nullptr, id);
  DispatchMessageW(&message);
  EXPECT_EQ(g_called, 0u);  // killed before it was dispatched
  const UINT_PTR again = SetTimer(nullptr, 0, 2'000, OnTimer);
  ASSERT_EQ(GetMessageW(&message, nullptr, 0, 0), TRUE);
  DispatchMessageW(&message);
  EXPECT_EQ(g_called, again);
}

TEST_F(MessagesTest, WaitingEndsForAnObjectAMessageOrTheTime) {
  Begin();
  const HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
  const DWORD start = GetTickCount();
  EXPECT_EQ(MsgWaitForMultipleObjects(1, &event, FALSE, 3'000, QS_ALLINPUT), DWORD{WAIT_TIMEOUT});
  EXPECT_GE(GetTickCount() - start, 3'000u);
  std::thread poster([&] { PostMessageW(window_, WM_USER, 0, 0); });
  EXPECT_EQ(MsgWaitForMultipleObjects(1, &event, FALSE, INFINITE, QS_ALLINPUT), WAIT_OBJECT_0 + 1);
  poster.join();
  SetEvent(event);
  EXPECT_EQ(MsgWaitForMultipleObjects(1, &event, FALSE, INFINITE, QS_ALLINPUT), WAIT_OBJECT_0);
  CloseHandle(event);
}

TEST_F(MessagesTest, RegisteredMessagesAreOneNumberAName) {
  Begin();
  const UINT number = RegisterWindowMessageW(u"vanta.test");
  EXPECT_GE(number, 0xC000u);
  EXPECT_EQ(RegisterWindowMessageW(u"VANTA.test"), number);
  EXPECT_NE(RegisterWindowMessageW(u"vanta.other"), number);
}

}  // namespace
