// VLayout: children from top to bottom. Their valign has no effect.
#pragma once

#include "lumo/controls/stack_layout.h"

namespace lumo {

class VLayout final : public StackLayout<Axis::Vertical> {};

}  // namespace lumo
