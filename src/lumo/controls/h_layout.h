// HLayout: children from left to right. Their halign has no effect.
#pragma once

#include "lumo/controls/stack_layout.h"

namespace lumo {

class HLayout final : public StackLayout<Axis::Horizontal> {};

}  // namespace lumo
