// Attribute lists as themes and layout bindings hold them: name="value" pairs, one space between two.
//
// A name is everything up to the next "="; a double quote must follow, the value runs to the next one. Exactly one
// space and more text continue the list; anything else ends it, and what was read before stays good.
#pragma once

#include "lumo/core/types.h"

#include <functional>

namespace lumo {

// The views point into the text that was given, which must outlive them.
class AttributeListReader {
 public:
  explicit AttributeListReader(StringView text) : rest_(text) {}

  // The next pair; false at the end, after which every further call says false too.
  bool Next(StringView* name, StringView* value);

 private:
  StringView rest_;
};

// A control's set-attribute operation; both texts are terminated and live for the call.
using AttributeSetter = std::function<void(const WCHAR* name, const WCHAR* value)>;

// Hands every pair of the list to the setter, in order.
void ApplyAttributeList(StringView list, const AttributeSetter& set);

// What a "theme" attribute does: the value is split at spaces, and the stored list of each theme is applied in order.
// Themes may name themes; one that is reached again while it is being applied is passed over, and one outermost call
// applies at most 1024 lists, so that themes that multiply each other come to an end. UI thread only.
void ApplyThemes(StringView names, const AttributeSetter& set);

}  // namespace lumo
