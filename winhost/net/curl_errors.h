// libcurl's results as WinINet's errors.
#pragma once

#include <curl/curl.h>
#include <winerror.h>

namespace winhost {

// `easy` is the handle of the transfer that ended with `code`; it tells what was wrong with a certificate.
DWORD InternetErrorOf(CURL* easy, CURLcode code);

}  // namespace winhost
