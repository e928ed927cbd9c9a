#include "lumo/core/markup_references.h"

#include "lumo/core/markup_units.h"

namespace lumo {
namespace {

constexpr DWORD kNoCharacter = 0;
constexpr DWORD kHighestCharacter = 0x10FFFF;

int DigitOf(WCHAR c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return 16;
}

DWORD NumberOf(StringView digits, int base) {
  DWORD number = 0;
  for (const WCHAR c : digits) {
    const int digit = DigitOf(c);
    if (digit >= base) return kNoCharacter;
    number = number * static_cast<DWORD>(base) + static_cast<DWORD>(digit);
    if (number > kHighestCharacter) return kNoCharacter;
  }
  return number;
}

bool IsOfReference(WCHAR c) {
  return c == '#' || (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// The length of "&name;" at the front of `text`, or 0. Looks no further than the name, so that texts of nothing but
// "&" are read in linear time.
size_t ReferenceLength(StringView text) {
  size_t end = 1;
  while (end < text.size() && IsOfReference(text[end])) ++end;
  return end < text.size() && text[end] == ';' ? end + 1 : 0;
}

// `reference` stands between "&" and ";".
DWORD CharacterOf(StringView reference) {
  if (!reference.starts_with('#')) return FindHtmlEntity(reference);
  reference.remove_prefix(1);
  if (!reference.starts_with('x')) return NumberOf(reference, 10);
  return NumberOf(reference.substr(1), 16);
}

void Append(String* text, DWORD character) {
  if (character > 0xFFFF) {
    text->push_back(static_cast<WCHAR>(0xD7C0 + (character >> 10)));
    character = 0xDC00 + (character & 0x3FF);
  }
  text->push_back(static_cast<WCHAR>(character));
}

}  // namespace

void DecodeReferences(StringView value, String* decoded) {
  decoded->clear();
  for (;;) {
    const size_t start = value.find('&');
    decoded->append(value.substr(0, start));
    if (start == StringView::npos) return;
    value.remove_prefix(start);
    const size_t length = ReferenceLength(value);
    const DWORD character = length ? CharacterOf(value.substr(1, length - 2)) : kNoCharacter;
    Append(decoded, character == kNoCharacter ? '&' : character);
    value.remove_prefix(character == kNoCharacter ? 1 : length);
  }
}

}  // namespace lumo
