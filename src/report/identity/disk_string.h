// Identifier 2's disk: serial number and model of the first built-in drive that tells them.
#pragma once

#include <string>

namespace vanta {

// Empty when no drive that counts tells a serial number.
std::string FirstDiskString();

}  // namespace vanta
