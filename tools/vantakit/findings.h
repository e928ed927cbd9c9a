// What a check has found, one line each: "place: what is wrong".
#pragma once

#include <string>
#include <vector>

namespace vantakit {

using Findings = std::vector<std::string>;

}  // namespace vantakit
