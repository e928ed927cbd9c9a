// The parts of a URL that a request is made of.
#pragma once

#include <windows.h>
#include <wininet.h>

#include "base/text.h"

namespace vanta::HttpLib {

struct UrlParts {
  String host;
  INTERNET_PORT port = 0;  // the scheme's own where the URL names none
  String path;             // with the query
};

// False, with the last error set, for what is no full URL, for a host of 260 characters or more and for a path with
// query of 1,024 or more.
bool SplitUrl(const String& url, UrlParts* parts);

}  // namespace vanta::HttpLib
