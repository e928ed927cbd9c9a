#include "lumo/core/attribute_list.h"

#include "lumo/core/global_resources.h"

namespace lumo {

bool AttributeListReader::Next(StringView* name, StringView* value) {
  const StringView list = rest_;
  rest_ = {};
  const size_t equals = list.find('=');
  if (equals == StringView::npos || !list.substr(equals + 1).starts_with('"')) return false;
  const size_t quote = list.find('"', equals + 2);
  if (quote == StringView::npos) return false;
  *name = list.substr(0, equals);
  *value = list.substr(equals + 2, quote - equals - 2);
  const StringView after = list.substr(quote + 1);
  if (after.size() > 1 && after[0] == ' ' && after[1] != ' ') rest_ = after.substr(1);
  return true;
}

void ApplyAttributeList(StringView list, const AttributeSetter& set) {
  StringView name, value;
  String terminated_name, terminated_value;
  for (AttributeListReader pairs(list); pairs.Next(&name, &value);) {
    terminated_name = name;
    terminated_value = value;
    set(terminated_name.c_str(), terminated_value.c_str());
  }
}

void ApplyThemes(StringView names, const AttributeSetter& set) { Globals().ApplyThemes(names, set); }

}  // namespace lumo
