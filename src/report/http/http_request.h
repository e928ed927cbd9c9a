// The WinINet client: one request over TLS, with the system's own settings for proxies and trust.
#pragma once

#include <windows.h>

#include "base/text.h"
#include "report/http/header_block.h"
#include "report/http/http_response.h"

#include <memory>
#include <vector>

namespace vanta::HttpLib {

class RequestDeadline;

// How long a request may take, in milliseconds; 0 leaves the system's own bound, which is minutes.
struct RequestTimes {
  DWORD step = 0;   // each of: connecting (which is then tried once), sending, waiting for the next piece of the answer
  DWORD whole = 0;  // all of it, redirects included
};

// One thread at a time.
class CHttpRequest {
 public:
  String agent;
  String proxy;   // "": the preconfigured one
  String url;     // followed redirects put the place that answered here
  String method;  // "": GET
  HeaderMap headers;
  std::vector<BYTE> body;
  bool read_response = true;
  RequestTimes times;

  // Performs the request and blocks until the answer's headers are there; its body is not read. Never null; the
  // response is empty (not Arrived) when anything failed. Every request is made over TLS, on the port of the URL
  // whatever its scheme. With read_response the status is read and at most five redirects are followed; a sixth, and a
  // location that is no full URL, end the request as failed.
  std::shared_ptr<CHttpResponse> Send();

 private:
  CHttpResponsePtr SendOnce(RequestDeadline& deadline) const;
  bool Open(CHttpResponse* response) const;
  bool OpenSession(CHttpResponse* response) const;
  bool Transmit(CHttpResponse* response, RequestDeadline& deadline) const;
};

using CHttpRequestPtr = std::shared_ptr<CHttpRequest>;

CHttpRequestPtr CreateHttpRequest(const String& url, const String& method, const String& proxy, const String& agent);

// 1 when a response arrived, whatever its status; otherwise 0.
int SendHttpRequest(const CHttpRequestPtr& request);

}  // namespace vanta::HttpLib
