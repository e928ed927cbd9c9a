// URLs, WinINet handles and multimedia timers; nothing is sent.
#include <windows.h>

#include <mmsystem.h>
#include <wininet.h>

#include "seam_check.h"

namespace {

struct Cracked {
  WCHAR host[16] = {};
  WCHAR path[16] = {};
  URL_COMPONENTSW parts = {};

  bool From(const WCHAR* url, DWORD path_room = 16) {
    parts = {};
    parts.dwStructSize = sizeof parts;
    parts.lpszHostName = host;
    parts.dwHostNameLength = 16;
    parts.lpszUrlPath = path;
    parts.dwUrlPathLength = path_room;
    return InternetCrackUrlW(url, 0, 0, &parts) != FALSE;
  }
  bool Is(const WCHAR* wanted_host, INTERNET_PORT port, const WCHAR* wanted_path) const {
    return lstrcmpW(host, wanted_host) == 0 && parts.nPort == port && lstrcmpW(path, wanted_path) == 0;
  }
};

bool QueryStaysBehindThePath() {
  Cracked url;
  return url.From(TEXT("https://a.example/b?c=d")) && url.Is(TEXT("a.example"), 443, TEXT("/b?c=d")) &&
         url.parts.dwUrlPathLength == 6 && url.parts.nScheme == INTERNET_SCHEME_HTTPS;
}

bool PortsAreTheSchemesOrTheUrls() {
  Cracked url;
  return url.From(TEXT("http://a/")) && url.Is(TEXT("a"), 80, TEXT("/")) && url.From(TEXT("http://a:8443/")) &&
         url.Is(TEXT("a"), 8443, TEXT("/"));
}

bool PathNeedsRoomForItsTerminator() {
  Cracked url;
  return url.From(TEXT("https://a/b?c"), 5) && !url.From(TEXT("https://a/b?c"), 4) &&
         GetLastError() == ERROR_INSUFFICIENT_BUFFER;
}

bool PathAloneIsNoUrl() {
  Cracked url;
  return !url.From(TEXT("/b?c"));
}

bool HandlesOpenInTheirOrder() {
  const HINTERNET session = InternetOpenW(TEXT(""), INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr, 0);
  DWORD number = 5000;
  const bool set = InternetSetOptionW(session, INTERNET_OPTION_RECEIVE_TIMEOUT, &number, sizeof number);
  const HINTERNET connection =
      InternetConnectW(session, TEXT("a.invalid"), 443, nullptr, nullptr, INTERNET_SERVICE_HTTP, 0, 1);
  const DWORD flags = INTERNET_FLAG_SECURE | INTERNET_FLAG_NO_AUTO_REDIRECT | INTERNET_FLAG_NO_COOKIES;
  const HINTERNET request = HttpOpenRequestW(connection, TEXT("GET"), TEXT("/b"), nullptr, nullptr, nullptr, flags, 1);
  const bool early = request && HttpSendRequestW(session, nullptr, 0, nullptr, 0);
  return set && request && !early && InternetCloseHandle(request) && InternetCloseHandle(connection) &&
         InternetCloseHandle(session);
}

volatile LONG calls = 0;
void CALLBACK Count(UINT, UINT, DWORD_PTR user, DWORD_PTR, DWORD_PTR) { calls = calls + static_cast<LONG>(user); }

bool OneShotTimersComeOnce() {
  calls = 0;
  const UINT timer = timeSetEvent(20, 10, Count, 7, TIME_ONESHOT | TIME_CALLBACK_FUNCTION);
  for (int i = 0; i < 200 && calls == 0; ++i) Sleep(10);
  Sleep(50);
  return timer != 0 && calls == 7;
}

bool KilledTimersDoNotCome() {
  calls = 0;
  const UINT timer = timeSetEvent(300, 10, Count, 1, TIME_ONESHOT | TIME_CALLBACK_FUNCTION | TIME_KILL_SYNCHRONOUS);
  const bool killed = timeKillEvent(timer) == TIMERR_NOERROR;
  Sleep(400);
  return killed && calls == 0 && timeKillEvent(timer) != TIMERR_NOERROR;
}

constexpr SeamCheck kChecks[] = {
    {"a URL's query stays behind its path", QueryStaysBehindThePath},
    {"a URL's port is its own or its scheme's", PortsAreTheSchemesOrTheUrls},
    {"a URL's path needs room for its terminator", PathNeedsRoomForItsTerminator},
    {"a path alone is no URL", PathAloneIsNoUrl},
    {"internet handles open in their order", HandlesOpenInTheirOrder},
    {"one-shot timers come once", OneShotTimersComeOnce},
    {"killed timers do not come", KilledTimersDoNotCome},
};

}  // namespace

std::span<const SeamCheck> NetChecks() { return kChecks; }
