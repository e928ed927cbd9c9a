// Which options of a window exclude each other.
#pragma once

#include "lumo/core/types.h"

#include <map>
#include <vector>

namespace lumo {

class ControlBase;

class OptionGroups {
 public:
  void Join(StringView group, ControlBase* option) {
    std::vector<ControlBase*>& members = groups_.try_emplace(String(group)).first->second;
    std::erase(members, option);
    members.push_back(option);
  }
  void Leave(StringView group, ControlBase* option) {
    const auto found = groups_.find(group);
    if (found == groups_.end()) return;
    std::erase(found->second, option);
    if (found->second.empty()) groups_.erase(found);
  }
  void LeaveAll(ControlBase* option) {
    for (auto group = groups_.begin(); group != groups_.end();) {
      std::erase(group->second, option);
      group = group->second.empty() ? groups_.erase(group) : std::next(group);
    }
  }
  // In the order of joining; a copy, since answering an event may change the group.
  std::vector<ControlBase*> Members(StringView group) const {
    const auto found = groups_.find(group);
    return found == groups_.end() ? std::vector<ControlBase*>() : found->second;
  }

 private:
  std::map<String, std::vector<ControlBase*>, std::less<>> groups_;
};

}  // namespace lumo
