#include "report/http/easy_request.h"

#include "report/http/easy_curl.h"

namespace vanta::EasyCurl {

int CHttpRequest::Send() {
  transfer_ = std::make_shared<CEasyCurl>();
  for (const String& line : headers) {
    if (!transfer_->AddHeader(line)) return EasyFailedInit;
  }
  if (!transfer_->SetUrl(url)) return EasyFailedInit;
  return transfer_->Perform();
}

}  // namespace vanta::EasyCurl
