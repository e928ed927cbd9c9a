#include "report/http/http_request.h"

#include "report/http/http_url.h"
#include "report/http/request_deadline.h"

namespace vanta::HttpLib {
namespace {

constexpr int kMostRedirects = 5;
constexpr DWORD_PTR kContext = 1;
constexpr DWORD kRequestFlags =
    INTERNET_FLAG_SECURE | INTERNET_FLAG_KEEP_CONNECTION | INTERNET_FLAG_NO_AUTO_REDIRECT | INTERNET_FLAG_NO_COOKIES;
static_assert(kRequestFlags == 0xE80000);

CHttpResponsePtr Nothing() { return std::make_shared<CHttpResponse>(); }

bool SetNumber(HINTERNET session, DWORD option, DWORD value) {
  return InternetSetOptionW(session, option, &value, sizeof value) != FALSE;
}

bool SetStepTime(HINTERNET session, DWORD milliseconds) {
  return SetNumber(session, INTERNET_OPTION_CONNECT_TIMEOUT, milliseconds) &&
         SetNumber(session, INTERNET_OPTION_SEND_TIMEOUT, milliseconds) &&
         SetNumber(session, INTERNET_OPTION_RECEIVE_TIMEOUT, milliseconds) &&
         SetNumber(session, INTERNET_OPTION_CONNECT_RETRIES, 1);
}

bool SetProxy(HINTERNET session, const String& proxy) {
  INTERNET_PROXY_INFO info = {};
  info.dwAccessType = INTERNET_OPEN_TYPE_PROXY;
  info.lpszProxy = proxy.c_str();
  return InternetSetOptionW(session, INTERNET_OPTION_PROXY, &info, sizeof info) != FALSE;
}

}  // namespace

CHttpResponsePtr CHttpRequest::Send() {
  RequestDeadline deadline(times.whole);
  for (int redirects = 0;; ++redirects) {
    CHttpResponsePtr response = SendOnce(deadline);
    if (!response->Arrived() || !read_response) return response;
    if (!response->ReadStatus()) return Nothing();
    if (!response->IsRedirect()) return response;
    String location;
    bool failed = false;
    if (!response->ReadLocation(&location, &failed)) return failed ? Nothing() : response;
    if (redirects == kMostRedirects) return Nothing();
    url = location;
  }
}

CHttpResponsePtr CHttpRequest::SendOnce(RequestDeadline& deadline) const {
  auto response = std::make_shared<CHttpResponse>();
  if (url.empty()) return response;
  if (Open(response.get()) && Transmit(response.get(), deadline)) return response;
  return Nothing();
}

bool CHttpRequest::Open(CHttpResponse* response) const {
  UrlParts parts;
  if (!SplitUrl(url, &parts) || !OpenSession(response)) return false;
  response->connection.reset(InternetConnectW(response->session.get(), parts.host.c_str(), parts.port, nullptr, nullptr,
                                              INTERNET_SERVICE_HTTP, 0, kContext));
  if (!response->connection) return false;
  const WCHAR* const verb = method.empty() ? TEXT("GET") : method.c_str();
  response->request.reset(HttpOpenRequestW(response->connection.get(), verb, parts.path.c_str(), nullptr, nullptr,
                                           nullptr, kRequestFlags, kContext));
  return response->request != nullptr;
}

bool CHttpRequest::OpenSession(CHttpResponse* response) const {
  response->session.reset(InternetOpenW(agent.c_str(), INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr, 0));
  if (!response->session) return false;
  if (!proxy.empty() && !SetProxy(response->session.get(), proxy)) return false;
  return times.step == 0 || SetStepTime(response->session.get(), times.step);
}

bool CHttpRequest::Transmit(CHttpResponse* response, RequestDeadline& deadline) const {
  const String block = HeaderBlock(headers);
  // The call takes what it sends as writable memory and leaves it alone.
  void* const content = body.empty() ? nullptr : const_cast<BYTE*>(body.data());
  if (!deadline.Watch(response->request.get())) return false;
  const bool sent = HttpSendRequestW(response->request.get(), block.empty() ? nullptr : block.c_str(),
                                     static_cast<DWORD>(block.size()), content, static_cast<DWORD>(body.size()));
  if (deadline.Unwatch()) return sent;
  static_cast<void>(response->request.release());  // closed by the deadline
  return false;
}

CHttpRequestPtr CreateHttpRequest(const String& url, const String& method, const String& proxy, const String& agent) {
  auto request = std::make_shared<CHttpRequest>();
  request->url = url;
  request->method = method;
  request->proxy = proxy;
  request->agent = agent;
  return request;
}

int SendHttpRequest(const CHttpRequestPtr& request) { return request->Send()->Arrived() ? 1 : 0; }

}  // namespace vanta::HttpLib
