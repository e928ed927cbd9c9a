// Numbers in attribute values, read strictly: what the library passes over is named.
#pragma once

#include <string>

#include "lumo/core/value_kind.h"

namespace vantakit {

// What is wrong with the value of an Integer, Length, Boolean, Decimal, Size, Extent, Rect or Point; "" when nothing
// is.
std::string WhyNoNumber(lumo::ValueKind kind, lumo::StringView value);

}  // namespace vantakit
