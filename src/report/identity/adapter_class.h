// What Windows' device class of network adapters says of them: which are real and which of those are wireless.
#pragma once

#include <vector>

#include "base/text.h"

namespace vanta {

struct ClassAdapter {
  String id;  // NetCfgInstanceId, "{…}"
  bool physical = false;
  bool wireless = false;  // physical ones only
};

// The first 256 entries of the class that have an id.
std::vector<ClassAdapter> ReadAdapterClass();
// By id without regard to case; null when the class does not know it.
const ClassAdapter* FindAdapter(const std::vector<ClassAdapter>& adapters, const String& id);

}  // namespace vanta
