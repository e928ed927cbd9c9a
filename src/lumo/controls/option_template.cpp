#include "lumo/controls/option_template.h"

#include "lumo/core/window.h"

namespace lumo {

bool UnselectOthers(ControlBase& option, StringView group, bool notify) {
  Window* const window = option.GetWindow();
  if (!window || group.empty()) return true;
  std::vector<WeakRef<ControlBase>> others;
  for (ControlBase* const member : window->GroupMembers(group)) {
    if (member != &option) others.emplace_back(member);
  }
  const WeakRef<ControlBase> self(&option);
  for (const WeakRef<ControlBase>& other : others) {
    IOption* const there = other ? other.Get()->AsOption() : nullptr;
    if (there) there->SetSelected(false, notify);
  }
  return static_cast<bool>(self);
}

void ChangeGroup(ControlBase& option, StringView from, StringView to) {
  Window* const window = option.GetWindow();
  if (!window) return;
  if (!from.empty()) window->LeaveGroup(from, &option);
  if (!to.empty()) window->JoinGroup(to, &option);
}

}  // namespace lumo
