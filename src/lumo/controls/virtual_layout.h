// VirtualLayout: the layout of virtual lists, one element below the other.
#pragma once

#include "lumo/controls/stack_layout.h"

namespace lumo {

class VirtualLayout final : public StackLayout<Axis::Vertical> {};

}  // namespace lumo
