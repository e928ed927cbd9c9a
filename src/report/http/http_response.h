// What came of a request: the handles it was made with and the answer's status.
#pragma once

#include "base/text.h"
#include "report/http/internet_handle.h"

#include <memory>

namespace vanta::HttpLib {

class CHttpResponse {
 public:
  // In the order in which they depend on each other, so that the request is closed first.
  InternetHandle session;
  InternetHandle connection;
  InternetHandle request;
  DWORD status = 0;  // 0 while it was not read

  // Whether an answer came, whatever its status.
  bool Arrived() const { return request != nullptr; }
  // Whether the status sends the client elsewhere: 301, 302 or 303.
  bool IsRedirect() const { return status == 301 || status == 302 || status == 303; }

  // Reads the status from the answer's headers. False when the answer has none.
  bool ReadStatus();
  // The header "Location"; false, with an empty text, when the answer has none. A location of 1,024 characters or more
  // is a failure: `failed` is set.
  bool ReadLocation(String* location, bool* failed) const;
};

using CHttpResponsePtr = std::shared_ptr<CHttpResponse>;

}  // namespace vanta::HttpLib
