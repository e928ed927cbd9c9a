// The callbacks of one kind on one control: event type → callbacks in the order in which they were attached.
#pragma once

#include "lumo/core/event.h"
#include "lumo/core/weak.h"

#include <vector>

namespace lumo {

class EventBindings {
 public:
  void Add(int type, EventBinding binding);
  bool IsEmpty() const { return lists_.empty(); }

  // Runs the list of the record's type, then the list for EventAll. Each list that is there sets `result`: 1 when all
  // its callbacks answered non-zero, 0 as soon as one answers 0, which ends that list. False when the owner was
  // destroyed meanwhile; this object is gone then, too. Callbacks may attach others, which run from the next record on.
  bool Run(_Msg2& record, const WeakRef<ControlBase>& owner, int* result) const;

 private:
  struct List {
    int type;
    std::vector<EventBinding> bindings;
  };
  const List* Find(int type) const;
  bool RunList(int type, _Msg2& record, const WeakRef<ControlBase>& owner, int* result) const;

  std::vector<List> lists_;
};

// What an Event or BubbledEvent element does: applies the attribute list to the control named `receiver` through
// ControlBase::SetSubControlAttributes of the owner, which is held weakly. Answers 1 (0 once the owner is gone).
EventBinding MakeLayoutBinding(ControlBase* owner, StringView receiver, StringView attribute_list);

}  // namespace lumo
