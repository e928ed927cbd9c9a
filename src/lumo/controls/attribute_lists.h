// What the controls' tables hold, gathered for tools that check layouts.
#pragma once

#include "lumo/core/value_kind.h"

namespace lumo {

// Every name that some control takes, once. Which controls take it, a control's SetAttribute says.
AttributeInfos ControlAttributes();

// The words of a kind that has a few; none for other kinds.
std::vector<StringView> WordsOf(ValueKind kind);

}  // namespace lumo
