// The text types of the library: UTF-16, the same as everywhere in the setup.
#pragma once

#include "base/text.h"

namespace lumo {

using vanta::String;
using vanta::StringView;

}  // namespace lumo
