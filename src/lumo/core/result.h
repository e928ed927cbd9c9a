// What the library's operations answer. The numbers are fixed.
#pragma once

namespace lumo {

enum LumoResult : int {
  LumoOk = 0,
  LumoMissingArgument = 1,
  LumoDuplicate = 2,  // the first definition stays
  LumoParseFailure = 3,
  LumoResourceFailure = 4,
};

}  // namespace lumo
