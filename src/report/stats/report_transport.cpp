#include "report/stats/report_transport.h"

#include "report/http/easy_request.h"
#include "report/http/http_request.h"

namespace vanta {
namespace {

constexpr HttpLib::RequestTimes kPromptly{5000, 10000};

HttpLib::CHttpRequestPtr GetRequest(const String& url) {
  return HttpLib::CreateHttpRequest(url, TEXT("GET"), String(), String());
}

}  // namespace

bool SendThroughWinInet(const String& url) { return HttpLib::SendHttpRequest(GetRequest(url)) == 1; }

bool SendThroughWinInetPromptly(const String& url) {
  const HttpLib::CHttpRequestPtr request = GetRequest(url);
  request->times = kPromptly;
  return HttpLib::SendHttpRequest(request) == 1;
}

bool SendThroughNetworkLibrary(const String& url) {
  EasyCurl::CHttpRequest request;
  request.url = url;
  request.headers.push_back(TEXT("Content-Type: application/x-www-form-urlencoded"));
  return request.Send() == 0;
}

}  // namespace vanta
