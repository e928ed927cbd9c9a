#include "winhost/net/curl_handles.h"

#include <mutex>

namespace winhost {
namespace {

bool Initialise() {
  static std::once_flag once;
  static bool ready = false;
  std::call_once(once, [] { ready = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK; });
  return ready;
}

}  // namespace

CurlEasy MakeCurlEasy() { return CurlEasy(Initialise() ? curl_easy_init() : nullptr); }
CurlMulti MakeCurlMulti() { return CurlMulti(Initialise() ? curl_multi_init() : nullptr); }

}  // namespace winhost
