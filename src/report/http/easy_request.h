// A request through the network library: the counterpart of the WinINet client's request.
#pragma once

#include "base/text.h"

#include <memory>
#include <vector>

namespace vanta {

class CEasyCurl;
using CEasyCurlPtr = std::shared_ptr<CEasyCurl>;

namespace EasyCurl {

// One thread at a time.
class CHttpRequest {
 public:
  String url;
  std::vector<String> headers;  // whole lines, "Name: value"

  // Performs a GET request and blocks until it is over. 0 on success, whatever the answer's status, otherwise curl's
  // number. The transfer with the answer stays readable until the next Send.
  int Send();
  const CEasyCurlPtr& transfer() const { return transfer_; }

 private:
  CEasyCurlPtr transfer_;
};

}  // namespace EasyCurl
}  // namespace vanta
