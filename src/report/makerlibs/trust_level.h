// The levels in which the base library's file-trust check and the signature check answer.
#pragma once

#include <windows.h>

namespace vanta {

enum TrustLevel : LONG {
  TrustUndecided = -1,
  TrustMaker = 1,     // the maker's own
  TrustRefused = 3,   // refused for libraries
  TrustReporter = 4,  // high enough for the crash reporter
};

// The level that the three properties of a trust object make, TrustUndecided when none speaks. Pure.
LONG TrustLevelOf(DWORD property4, DWORD property5, DWORD property3);

}  // namespace vanta
