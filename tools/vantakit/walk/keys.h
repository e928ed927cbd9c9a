// Keys by their names.
#pragma once

#include <string>
#include <vector>

namespace vantakit {

// Virtual keys in the order in which they are pressed: "Shift+Tab" is Shift, then Tab. Throws Failure for a name that
// no key has.
std::vector<int> ParseKeys(const std::string& text);

}  // namespace vantakit
