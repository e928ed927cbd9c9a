#include <windows.h>
#include <wininet.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "tests/support/https_server.h"
#include "tests/support/machine_fixture.h"

namespace {

constexpr DWORD kFlags = INTERNET_FLAG_SECURE | INTERNET_FLAG_NO_AUTO_REDIRECT | INTERNET_FLAG_NO_COOKIES;

class WinInetTest : public testing_support::OnMachine {
 protected:
  HINTERNET Open(const std::string& path, INTERNET_PORT port, DWORD flags = kFlags) {
    session_ = InternetOpenW(TEXT(""), INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr, 0);
    connection_ = InternetConnectW(session_, TEXT("localhost"), port, nullptr, nullptr, INTERNET_SERVICE_HTTP, 0, 1);
    return HttpOpenRequestW(connection_, TEXT("GET"), winhost::Wide(path).c_str(), nullptr, nullptr, nullptr, flags, 1);
  }
  HINTERNET session_ = nullptr;
  HINTERNET connection_ = nullptr;
};

struct Cracked {
  std::u16string host, path;
  INTERNET_PORT port = 0;
  DWORD error = 0;
};

Cracked Crack(const WCHAR* url, DWORD host_room = 64, DWORD path_room = 64) {
  WCHAR host[64] = {}, path[64] = {};
  URL_COMPONENTSW parts = {};
  parts.dwStructSize = sizeof parts;
  parts.lpszHostName = host;
  parts.dwHostNameLength = host_room;
  parts.lpszUrlPath = path;
  parts.dwUrlPathLength = path_room;
  if (!InternetCrackUrlW(url, 0, 0, &parts)) return {.host = {}, .path = {}, .port = 0, .error = GetLastError()};
  EXPECT_EQ(parts.dwHostNameLength, std::u16string(host).size());
  EXPECT_EQ(parts.dwUrlPathLength, std::u16string(path).size());
  return {host, path, parts.nPort, 0};
}

TEST_F(WinInetTest, UrlsAreTakenApart) {
  Start();
  struct Row {
    const WCHAR *url, *host, *path;
    INTERNET_PORT port;
  };
  for (const Row& row :
       {Row{TEXT("https://a.b/c?d=e#f"), TEXT("a.b"), TEXT("/c?d=e#f"), 443},
        Row{TEXT("HTTP://a"), TEXT("a"), TEXT(""), 80}, Row{TEXT("https://a:8443?x"), TEXT("a"), TEXT("?x"), 8443},
        Row{TEXT("http://user:word@a:1/"), TEXT("a"), TEXT("/"), 1}}) {
    const Cracked parts = Crack(row.url);
    EXPECT_EQ(parts.host, row.host);
    EXPECT_EQ(parts.path, row.path);
    EXPECT_EQ(parts.port, row.port);
  }
  EXPECT_EQ(Crack(TEXT("gopher://a/")).error, static_cast<DWORD>(ERROR_INTERNET_UNRECOGNIZED_SCHEME));
  EXPECT_EQ(Crack(TEXT("nothing")).error, static_cast<DWORD>(ERROR_INTERNET_UNRECOGNIZED_SCHEME));
  EXPECT_EQ(Crack(TEXT("https:a")).error, static_cast<DWORD>(ERROR_INTERNET_INVALID_URL));
  EXPECT_EQ(Crack(TEXT("https://:1/")).error, static_cast<DWORD>(ERROR_INTERNET_INVALID_URL));
  EXPECT_EQ(Crack(TEXT("https://a:1x/")).error, static_cast<DWORD>(ERROR_INTERNET_INVALID_URL));
  EXPECT_EQ(Crack(TEXT("https://a:65536/")).error, static_cast<DWORD>(ERROR_INTERNET_INVALID_URL));
  EXPECT_EQ(Crack(TEXT("https://ab/"), 3).error, 0u);
  EXPECT_EQ(Crack(TEXT("https://ab/"), 2).error, static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
  EXPECT_EQ(Crack(TEXT("https://a/b?c"), 64, 4).error, static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
}

TEST_F(WinInetTest, HeadersOfTheAnswerCanBeAsked) {
  testing_support::HttpsServer server;
  Start(server.Facts());
  const HINTERNET request = Open("/to?somewhere", static_cast<INTERNET_PORT>(server.Port()));
  WCHAR text[10] = {};
  DWORD bytes = sizeof text;
  EXPECT_FALSE(HttpQueryInfoW(request, HTTP_QUERY_STATUS_CODE, text, &bytes, nullptr)) << "nothing was sent yet";
  ASSERT_TRUE(HttpSendRequestW(request, nullptr, 0, nullptr, 0)) << GetLastError();
  bytes = sizeof text;
  EXPECT_TRUE(HttpQueryInfoW(request, HTTP_QUERY_STATUS_CODE, text, &bytes, nullptr));
  EXPECT_EQ(std::u16string(text), u"302");
  EXPECT_EQ(bytes, 6u);
  bytes = 18;
  EXPECT_FALSE(HttpQueryInfoW(request, HTTP_QUERY_LOCATION, text, &bytes, nullptr));
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
  EXPECT_EQ(bytes, 20u);
  EXPECT_TRUE(HttpQueryInfoW(request, HTTP_QUERY_LOCATION, text, &bytes, nullptr));
  EXPECT_EQ(std::u16string(text), u"somewhere");
}

TEST_F(WinInetTest, BlanksAndLettersOutsideOfAsciiAreEscaped) {
  testing_support::HttpsServer server;
  Start(server.Facts());
  const HINTERNET request = Open("ok?a b=\xE4\xBD\xA0", static_cast<INTERNET_PORT>(server.Port()));
  ASSERT_TRUE(HttpSendRequestW(request, TEXT("A: 1\r\nB: 2\n"), static_cast<DWORD>(-1), nullptr, 0));
  const std::string sent = server.Requests();
  EXPECT_TRUE(sent.starts_with("GET /ok?a%20b=%E4%BD%A0 [")) << sent;
  EXPECT_NE(sent.find("; A: 1; B: 2]"), sent.npos) << sent;
}

TEST_F(WinInetTest, WhatCouldSmuggleAHeaderIsRefused) {
  Start();
  EXPECT_EQ(Open("/ok\r\nX: y", 1), nullptr);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
}

TEST_F(WinInetTest, WhatIsNotThereIsToldSo) {
  Start();
  EXPECT_EQ(Open("/", 1, INTERNET_FLAG_SECURE), nullptr) << "would follow redirects";
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_NOT_SUPPORTED));
  EXPECT_EQ(InternetOpenW(TEXT(""), INTERNET_OPEN_TYPE_PROXY, TEXT("p"), nullptr, 0), nullptr);
  DWORD number = 1;
  EXPECT_FALSE(InternetSetOptionW(session_, 77, &number, sizeof number));
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INTERNET_INVALID_OPTION));
  EXPECT_FALSE(InternetSetOptionW(session_, INTERNET_OPTION_CONNECT_TIMEOUT, &number, 2));
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INTERNET_BAD_OPTION_LENGTH));
  EXPECT_FALSE(HttpSendRequestW(session_, nullptr, 0, nullptr, 0));
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INTERNET_INCORRECT_HANDLE_TYPE));
  EXPECT_TRUE(InternetCloseHandle(session_));
  EXPECT_FALSE(InternetCloseHandle(session_));
}

TEST_F(WinInetTest, ClosingTheHandleEndsTheCallThatWorksOnIt) {
  testing_support::HttpsServer server;
  Start(server.Facts());
  const HINTERNET request = Open("/never", static_cast<INTERNET_PORT>(server.Port()));
  std::thread closer([&] {
    while (server.RequestCount() == 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    EXPECT_TRUE(InternetCloseHandle(request));
  });
  EXPECT_FALSE(HttpSendRequestW(request, nullptr, 0, nullptr, 0));
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INTERNET_OPERATION_CANCELLED));
  closer.join();
}

TEST_F(WinInetTest, LinuxProxiesAreNotTheMachines) {
  testing_support::HttpsServer server;
  setenv("https_proxy", ("http://127.0.0.1:" + std::to_string(server.Port("closed"))).c_str(), 1);
  Start(server.Facts());
  EXPECT_TRUE(HttpSendRequestW(Open("/ok", static_cast<INTERNET_PORT>(server.Port())), nullptr, 0, nullptr, 0));
  unsetenv("https_proxy");
}

TEST_F(WinInetTest, EmptyPlaceHidesAHost) {
  Start(R"({"hosts": {"LocalHost": ""}})");
  EXPECT_FALSE(HttpSendRequestW(Open("/", 1), nullptr, 0, nullptr, 0));
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INTERNET_NAME_NOT_RESOLVED));
}

}  // namespace
