#include "report/http/http_response.h"

#include <wchar.h>

namespace vanta::HttpLib {
namespace {

constexpr DWORD kStatusRoom = 256;     // characters, terminator included
constexpr DWORD kLocationRoom = 1024;  // the same

template <DWORD Room>
bool QueryText(HINTERNET request, DWORD what, String* text) {
  WCHAR buffer[Room] = {};
  DWORD bytes = sizeof buffer;
  if (!HttpQueryInfoW(request, what, buffer, &bytes, nullptr)) return false;
  text->assign(buffer, bytes / sizeof(WCHAR));
  return true;
}

}  // namespace

bool CHttpResponse::ReadStatus() {
  String text;
  if (!QueryText<kStatusRoom>(request.get(), HTTP_QUERY_STATUS_CODE, &text)) return false;
  status = static_cast<DWORD>(wcstol(text.c_str(), nullptr, 10));
  return true;
}

bool CHttpResponse::ReadLocation(String* location, bool* failed) const {
  const bool present = QueryText<kLocationRoom>(request.get(), HTTP_QUERY_LOCATION, location);
  *failed = !present && GetLastError() != ERROR_HTTP_HEADER_NOT_FOUND;
  return present;
}

}  // namespace vanta::HttpLib
