#include "lumo/core/event_bindings.h"

#include "lumo/controls/control_base.h"

namespace lumo {

void EventBindings::Add(int type, EventBinding binding) {
  for (List& list : lists_) {
    if (list.type != type) continue;
    list.bindings.push_back(std::move(binding));
    return;
  }
  lists_.push_back({type, {}});
  lists_.back().bindings.push_back(std::move(binding));
}

bool EventBindings::Run(_Msg2& record, const WeakRef<ControlBase>& owner, int* result) const {
  if (lists_.empty()) return true;
  const int type = record.type;
  if (!RunList(type, record, owner, result)) return false;
  return type == EventAll || RunList(EventAll, record, owner, result);
}

// Works on a copy: a callback may attach another, or destroy the owner and these lists with it.
bool EventBindings::RunList(int type, _Msg2& record, const WeakRef<ControlBase>& owner, int* result) const {
  const List* const found = Find(type);
  if (!found) return true;
  const std::vector<EventBinding> bindings = found->bindings;
  *result = 1;
  for (const EventBinding& binding : bindings) {
    const int answer = binding(record);
    if (!owner) return false;
    if (answer) continue;
    *result = 0;
    break;
  }
  return true;
}

const EventBindings::List* EventBindings::Find(int type) const {
  for (const List& list : lists_) {
    if (list.type == type) return &list;
  }
  return nullptr;
}

EventBinding MakeLayoutBinding(ControlBase* owner, StringView receiver, StringView attribute_list) {
  return [owner = WeakRef<ControlBase>(owner), receiver = String(receiver), list = String(attribute_list)](_Msg2&) {
    ControlBase* const control = owner.Get();
    if (!control) return 0;
    control->SetSubControlAttributes(receiver, list);
    return 1;
  };
}

}  // namespace lumo
