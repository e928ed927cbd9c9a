// Identifier 1's disk: the first serial number that any drive tells in any of four ways.
#pragma once

#include <string>

namespace vanta {

// Without trailing blanks; empty when no drive tells one.
std::string FirstDiskSerial();

}  // namespace vanta
