#include "report/http/http_url.h"

namespace vanta::HttpLib {
namespace {

// Characters, terminator included.
constexpr DWORD kHostRoom = 260;
constexpr DWORD kPathRoom = 1024;

}  // namespace

bool SplitUrl(const String& url, UrlParts* parts) {
  WCHAR host[kHostRoom] = {};
  WCHAR path[kPathRoom] = {};
  URL_COMPONENTSW components = {};
  components.dwStructSize = sizeof components;
  components.lpszHostName = host;
  components.dwHostNameLength = kHostRoom;
  components.lpszUrlPath = path;
  components.dwUrlPathLength = kPathRoom;
  // The query has no buffer of its own and therefore stays behind the path.
  if (!InternetCrackUrlW(url.c_str(), 0, 0, &components)) return false;
  parts->host.assign(host, components.dwHostNameLength);
  parts->port = components.nPort;
  parts->path.assign(path, components.dwUrlPathLength);
  return true;
}

}  // namespace vanta::HttpLib
