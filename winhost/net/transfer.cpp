#include "winhost/net/transfer.h"

#include <curl/curl.h>
#include <wininet.h>

#include <algorithm>
#include <chrono>

#include "winhost/machine/clock.h"
#include "winhost/machine/machine.h"
#include "winhost/net/curl_errors.h"
#include "winhost/net/curl_handles.h"
#include "winhost/net/hosts.h"
#include "winhost/net/tls_trust.h"

namespace winhost {
namespace {

using RealClock = std::chrono::steady_clock;

// A clock that stands gives waits a short grace; servers need the whole time.
std::chrono::nanoseconds RealTime(std::uint32_t ms) {
  if (MachineClockStands()) return std::chrono::milliseconds(ms);
  return std::chrono::nanoseconds(RealWaitNs(ms));
}

CURLcode TrustAsTheMachine(CURL*, void* context, void*) {
  Machine::Current().Get<TlsTrust>().ApplyTo(static_cast<SSL_CTX*>(context));
  return CURLE_OK;
}

std::size_t RefuseBody(char*, std::size_t, std::size_t, void*) { return 0; }

// What is yet to come while connecting, or from one piece of the answer to the next.
class Patience {
 public:
  explicit Patience(std::uint32_t ms) { Renew(ms); }
  void Renew(std::uint32_t ms) { end_ = RealClock::now() + RealTime(ms); }
  int LeftMs() const {
    using namespace std::chrono;
    const auto left = duration_cast<milliseconds>(end_ - RealClock::now()).count() + 1;
    return static_cast<int>(std::clamp<long long>(left, 0, 250));
  }
  bool IsOver() const { return RealClock::now() >= end_; }

 private:
  RealClock::time_point end_;
};

// Moves a standing clock on, a second for each second that passes: what is shorter belongs to the server's work and
// not to waiting for it.
class PassingSeconds {
 public:
  void Pass() {
    using namespace std::chrono;
    for (; RealClock::now() >= next_; next_ += seconds(1)) PassWaitedMs(1000);
  }

 private:
  RealClock::time_point next_ = RealClock::now() + std::chrono::seconds(1);
};

}  // namespace

struct Transfer::Handles {
  CurlLists lists;
  CurlEasy easy = MakeCurlEasy();
  CurlMulti multi = MakeCurlMulti();
};

namespace {

void SetRequest(CURL* easy, const TransferPlan& plan, CurlLists& lists) {
  curl_easy_setopt(easy, CURLOPT_URL, plan.server.c_str());
  curl_easy_setopt(easy, CURLOPT_REQUEST_TARGET, plan.target.c_str());
  curl_easy_setopt(easy, CURLOPT_CUSTOMREQUEST, plan.verb.c_str());
  curl_easy_setopt(easy, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
  if (!plan.agent.empty()) curl_easy_setopt(easy, CURLOPT_USERAGENT, plan.agent.c_str());
  if (!plan.body.empty()) {
    curl_easy_setopt(easy, CURLOPT_POSTFIELDSIZE, static_cast<long>(plan.body.size()));
    curl_easy_setopt(easy, CURLOPT_POSTFIELDS, plan.body.data());
  }
  // What libcurl would add by itself and WinINet does not.
  for (const char* none : {"Accept:", "Expect:", "Content-Type:"}) lists.Add(0, none);
  lists.Add(0, "Connection: Keep-Alive");
  for (const std::string& header : plan.headers) lists.Add(0, header);
  curl_easy_setopt(easy, CURLOPT_HTTPHEADER, lists.Get(0));
}

void SetRoute(CURL* easy, const TransferPlan& plan, const std::string& instead, CurlLists& lists) {
  curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https");
  curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 0L);
  // Set even when empty: the machine knows nothing of proxies in the Linux environment.
  curl_easy_setopt(easy, CURLOPT_PROXY, plan.proxy.c_str());
  curl_easy_setopt(easy, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
  if (!instead.empty()) {
    lists.Add(1, "::" + instead);
    curl_easy_setopt(easy, CURLOPT_CONNECT_TO, lists.Get(1));
  }
  curl_easy_setopt(easy, CURLOPT_SSL_VERIFYPEER, 1L);
  curl_easy_setopt(easy, CURLOPT_SSL_VERIFYHOST, 2L);
  curl_easy_setopt(easy, CURLOPT_SSL_CTX_FUNCTION, TrustAsTheMachine);
  // Patience below ends a connection that takes too long; libcurl's own bound must not come before it.
  curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT_MS, 3'600'000L);
}

bool IsConnected(CURL* easy) {
  curl_off_t microseconds = 0;
  return curl_easy_getinfo(easy, CURLINFO_PRETRANSFER_TIME_T, &microseconds) == CURLE_OK && microseconds > 0;
}

}  // namespace

Transfer::Transfer(TransferPlan plan) : plan_(std::move(plan)) {}

DWORD Transfer::Run() {
  DWORD result = ERROR_SUCCESS;
  for (std::uint32_t tries = 0; tries == 0 || tries < plan_.connect_tries; ++tries) {
    headers_.clear();
    complete_ = false;
    result = Try();
    if (result != ERROR_INTERNET_CANNOT_CONNECT) break;
  }
  if (result != ERROR_SUCCESS) headers_.clear();
  return result;
}

DWORD Transfer::Try() {
  const HostPlace place = Machine::Current().Get<Hosts>().Find(plan_.host);
  if (!place.known && plan_.proxy.empty()) return ERROR_INTERNET_NAME_NOT_RESOLVED;
  Handles handles;
  if (!handles.easy || !handles.multi) return ERROR_INTERNET_INTERNAL_ERROR;
  CURL* const easy = handles.easy.get();
  SetRequest(easy, plan_, handles.lists);
  SetRoute(easy, plan_, place.instead, handles.lists);
  curl_easy_setopt(easy, CURLOPT_HEADERFUNCTION, &Transfer::TakeHeader);
  curl_easy_setopt(easy, CURLOPT_HEADERDATA, this);
  curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, RefuseBody);
  if (curl_multi_add_handle(handles.multi.get(), easy) != CURLM_OK) return ERROR_INTERNET_INTERNAL_ERROR;
  {
    const std::scoped_lock lock(lock_);
    running_ = handles.multi.get();
  }
  const DWORD result = Drive(handles);
  {
    const std::scoped_lock lock(lock_);
    running_ = nullptr;
  }
  curl_multi_remove_handle(handles.multi.get(), easy);
  return result;
}

DWORD Transfer::Drive(Handles& handles) {
  CURLM* const multi = handles.multi.get();
  Patience patience(plan_.connect_ms);
  PassingSeconds seconds;
  bool connected = false;
  for (int running = 1;;) {
    if (cancelled_) return ERROR_INTERNET_OPERATION_CANCELLED;
    if (curl_multi_perform(multi, &running) != CURLM_OK) return ERROR_INTERNET_INTERNAL_ERROR;
    if (running == 0) return Result(handles);
    if (!connected && IsConnected(handles.easy.get())) {
      connected = true;
      patience.Renew(plan_.receive_ms);
    }
    seconds.Pass();
    if (patience.IsOver()) return ERROR_INTERNET_TIMEOUT;
    int ready = 0;
    curl_multi_poll(multi, nullptr, 0, patience.LeftMs(), &ready);
    if (connected && ready > 0) patience.Renew(plan_.receive_ms);
  }
}

// The exchange is over: ended by ourselves at the end of the headers, by the server, or failed.
DWORD Transfer::Result(Handles& handles) const {
  if (complete_) return ERROR_SUCCESS;
  CURLcode code = CURLE_GOT_NOTHING;
  int left = 0;
  while (const CURLMsg* message = curl_multi_info_read(handles.multi.get(), &left)) {
    if (message->msg == CURLMSG_DONE) code = message->data.result;
  }
  return InternetErrorOf(handles.easy.get(), code);
}

void Transfer::Cancel() {
  cancelled_ = true;
  const std::scoped_lock lock(lock_);
  if (running_) curl_multi_wakeup(running_);
}

std::size_t Transfer::TakeHeader(char* bytes, std::size_t size, std::size_t count, void* transfer) {
  auto& self = *static_cast<Transfer*>(transfer);
  std::string line(bytes, size * count);
  while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) line.pop_back();
  if (line.starts_with("HTTP/")) self.headers_.clear();  // what came before was an interim answer
  if (!line.empty()) {
    self.headers_.push_back(line);
    return size * count;
  }
  const std::string& status = self.headers_.empty() ? line : self.headers_.front();
  const std::size_t blank = status.find(' ');
  const bool interim = blank != std::string::npos && status[blank + 1] == '1';
  self.complete_ = !interim && !self.headers_.empty();
  return self.complete_ ? 0 : size * count;  // 0 ends the exchange before its body
}

}  // namespace winhost
