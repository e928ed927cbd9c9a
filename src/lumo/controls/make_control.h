// A new control for a tag of a layout, for the builder's table.
#pragma once

#include "lumo/controls/child_box.h"
#include "lumo/controls/circle_progress.h"
#include "lumo/controls/boxes.h"
#include "lumo/controls/labels.h"
#include "lumo/controls/lists.h"
#include "lumo/controls/progress.h"
#include "lumo/controls/tab_box.h"

namespace lumo {

template <class T>
ControlBase* MakeControl() {
  return new T;
}
// A list whose elements are arranged by L.
template <class L>
ControlBase* MakeList() {
  return new ListBox(std::make_unique<L>());
}

}  // namespace lumo
