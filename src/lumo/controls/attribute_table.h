// Attributes as a table: a row a name, with the kind of its value, which decides its reader, and the setter that takes
// it.
#pragma once

#include "lumo/core/types.h"
#include "lumo/core/value_kind.h"
#include "lumo/core/value_readers.h"

namespace lumo {

template <class Target>
struct AttributeValue {
  ValueKind kind;
  void (*apply)(Target& target, StringView value);
};
template <class Target>
struct AttributeRow {
  StringView name;
  AttributeValue<Target> value;
};

inline StringView ReadText(StringView value) { return value; }
template <ValueKind Kind>
inline constexpr auto kReader = &ReadText;
template <>
inline constexpr auto kReader<ValueKind::Integer> = &ReadInteger;
template <>
inline constexpr auto kReader<ValueKind::Length> = &ReadInteger;
template <>
inline constexpr auto kReader<ValueKind::Boolean> = &ReadBoolean;
template <>
inline constexpr auto kReader<ValueKind::Size> = &ReadSize;
template <>
inline constexpr auto kReader<ValueKind::Rect> = &ReadRect;
template <>
inline constexpr auto kReader<ValueKind::Extent> = &ReadPoint;
template <>
inline constexpr auto kReader<ValueKind::Point> = &ReadPoint;

// Reads the value as its kind says and hands it to Set, a member function or a function over the target.
template <class Target, ValueKind Kind, auto Set>
void ApplyAs(Target& target, StringView value) {
  if constexpr (std::is_member_function_pointer_v<decltype(Set)>) {
    (target.*Set)(kReader<Kind>(value));
  } else {
    Set(target, kReader<Kind>(value));
  }
}
template <class Target, ValueKind Kind, auto Set>
inline constexpr AttributeValue<Target> kValueAs = {Kind, &ApplyAs<Target, Kind, Set>};

template <class Target, size_t N>
consteval bool SortedAndUnique(const AttributeRow<Target> (&rows)[N]) {
  for (size_t i = 1; i < N; ++i) {
    if (rows[i - 1].name >= rows[i].name) return false;
  }
  return true;
}

// False when the name is in no row. The target may be gone afterwards: a setter may send events.
template <class Target>
bool ApplyAttribute(const AttributeRow<Target>* rows, size_t count, Target& target, StringView name, StringView value) {
  size_t low = 0;
  for (size_t high = count; low < high;) {
    const size_t middle = (low + high) / 2;
    if (rows[middle].name < name) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  if (low == count || rows[low].name != name) return false;
  rows[low].value.apply(target, value);
  return true;
}
template <class Target, size_t N>
bool ApplyAttribute(const AttributeRow<Target> (&rows)[N], Target& target, StringView name, StringView value) {
  return ApplyAttribute(rows, N, target, name, value);
}

// Adds what the rows are called and what their values are.
template <class Target, size_t N>
void ListRows(const AttributeRow<Target> (&rows)[N], AttributeInfos* infos) {
  for (const AttributeRow<Target>& row : rows) infos->push_back({row.name, row.value.kind});
}

// Keywords of an attribute: word, value.
template <class V>
struct Keyword {
  StringView word;
  V value;
};
// Compared exactly; null for any other word.
template <class V, size_t N>
const V* FindKeyword(const Keyword<V> (&words)[N], StringView text) {
  for (const Keyword<V>& word : words) {
    if (word.word == text) return &word.value;
  }
  return nullptr;
}

template <class V, size_t N>
std::vector<StringView> WordsIn(const Keyword<V> (&words)[N]) {
  std::vector<StringView> list;
  for (const Keyword<V>& word : words) list.push_back(word.word);
  return list;
}

}  // namespace lumo
