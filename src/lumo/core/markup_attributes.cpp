#include "lumo/core/markup_attributes.h"

#include "lumo/core/markup_units.h"

namespace lumo {
namespace {

const WCHAR* SkipBlanks(const WCHAR* at) {
  while (IsMarkupBlank(*at)) ++at;
  return at;
}

// Where the word [from, at) ends: the "/" of "/>" is not part of it.
const WCHAR* WithoutTagEnd(const WCHAR* from, const WCHAR* at) {
  return *at == '>' && at != from && at[-1] == '/' ? at - 1 : at;
}

// The closing quote, or the text's end. `first` is the first unit of the class, which may be an "&" before it.
template <UnitClass stop>
const WCHAR* EndOfQuoted(const WCHAR* first, UnitFinder& finder) {
  while (*first == '&') first = finder.Find<stop>(first + 1);
  return first;
}

const WCHAR* EndOfBare(const WCHAR* at, const WCHAR* end, bool* has_reference) {
  for (; at != end && *at != '>' && !IsMarkupBlank(*at); ++at) {
    if (*at == '&') *has_reference = true;
  }
  return at;
}

// Where an attribute's value stands.
struct Value {
  const WCHAR* from;
  const WCHAR* to;
  bool has_reference;
};

// From behind the attribute's name to behind its value; without "=" the value is empty.
const WCHAR* ReadValue(const WCHAR* at, UnitFinder& finder, Value* value) {
  at = SkipBlanks(at);
  *value = {at, at, false};
  if (*at != '=') return at;
  value->from = SkipBlanks(at + 1);
  if (*value->from != '"' && *value->from != '\'') {
    at = EndOfBare(value->from, finder.End(), &value->has_reference);
    value->to = WithoutTagEnd(value->from, at);
    return at;
  }
  const bool is_double = *value->from++ == '"';
  value->to = is_double ? finder.Find<UnitDouble>(value->from) : finder.Find<UnitSingle>(value->from);
  value->has_reference = *value->to == '&';
  if (value->has_reference) {
    value->to = is_double ? EndOfQuoted<UnitDouble>(value->to, finder) : EndOfQuoted<UnitSingle>(value->to, finder);
  }
  return value->to == finder.End() ? value->to : value->to + 1;
}

}  // namespace

// The text ends in a NUL, so that looking at a unit needs no other check.
const WCHAR* ReadAttributes(const WCHAR* begin, const WCHAR* at, UnitFinder& finder, AttributeRecords* records) {
  for (;;) {
    for (; MayBeOfClass(*at, UnitPause); ++at) {
      if (*at == '>' || at == finder.End()) return at;
      if (*at == 0 || *at >= 256) break;
    }
    const WCHAR* const name = at;
    const WCHAR* name_end = at = finder.FindNear<UnitWordEnd>(at);
    Value value;
    // Nearly all attributes look like this: name="value" without a reference.
    if (*at == '=' && at[1] == '"' && *(at = finder.FindNear<UnitDouble>(value.from = at + 2)) == '"') [[likely]] {
      value.to = at++;
      value.has_reference = false;
    } else {
      name_end = WithoutTagEnd(name, finder.Find<UnitWordEnd>(name_end));
      at = ReadValue(name_end, finder, &value);
    }
    if (!records) continue;
    AttributeRecord record;
    record.name = static_cast<LONG>(name - begin);
    record.name_length = static_cast<LONG>(name_end - name);
    record.value = static_cast<LONG>(value.from - begin);
    record.value_length_and_reference = static_cast<LONG>(value.to - value.from) * 2 + value.has_reference;
    records->push_back(record);
  }
}

}  // namespace lumo
