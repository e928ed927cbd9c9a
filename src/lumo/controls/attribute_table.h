// Attributes as a table: a row a name, with the reader of its value and the setter that takes it.
#pragma once

#include "lumo/core/types.h"
#include "lumo/core/value_readers.h"

namespace lumo {

template <class Target>
struct AttributeRow {
  StringView name;
  void (*apply)(Target& target, StringView value);
};

// A row's function: reads the value with Read and hands it to Set, a member function or a function over the target.
template <class Target, auto Read, auto Set>
void ApplyAs(Target& target, StringView value) {
  if constexpr (std::is_member_function_pointer_v<decltype(Set)>) {
    (target.*Set)(Read(value));
  } else {
    Set(target, Read(value));
  }
}
inline StringView ReadText(StringView value) { return value; }

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
  rows[low].apply(target, value);
  return true;
}
template <class Target, size_t N>
bool ApplyAttribute(const AttributeRow<Target> (&rows)[N], Target& target, StringView name, StringView value) {
  return ApplyAttribute(rows, N, target, name, value);
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

}  // namespace lumo
