// Extra request headers, as HttpSendRequestW takes them.
#pragma once

#include "base/text.h"

#include <map>
#include <vector>

namespace vanta::HttpLib {

using HeaderMap = std::map<String, std::vector<String>>;

// "name:value,value" for each name in the map's order, lines parted by one line feed; "" for no header. Pure.
String HeaderBlock(const HeaderMap& headers);

}  // namespace vanta::HttpLib
