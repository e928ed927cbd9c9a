#include "lumo/core/value_readers.h"

#include "lumo/core/scaling.h"

#include <limits.h>

namespace lumo {
namespace {

constexpr bool IsBlank(WCHAR c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
constexpr bool IsDigit(WCHAR c) { return c >= '0' && c <= '9'; }

int Saturated(LONGLONG magnitude, bool negative) {
  const LONGLONG value = negative ? -magnitude : magnitude;
  return value > INT_MAX ? INT_MAX : value < INT_MIN ? INT_MIN : static_cast<int>(value);
}

int HexDigit(WCHAR c) {
  if (IsDigit(c)) return c - '0';
  const WCHAR lower = vanta::AsciiLower(c);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

bool BeginsHexNumber(StringView text) {
  return text.size() > 2 && text[0] == '0' && vanta::AsciiLower(text[1]) == 'x' && HexDigit(text[2]) >= 0;
}

}  // namespace

int TakeInteger(StringView* text) {
  size_t at = 0;
  while (at < text->size() && IsBlank((*text)[at])) ++at;
  const bool negative = at < text->size() && (*text)[at] == '-';
  if (negative || (at < text->size() && (*text)[at] == '+')) ++at;
  const size_t digits = at;
  LONGLONG magnitude = 0;
  for (; at < text->size() && IsDigit((*text)[at]); ++at) {
    if (magnitude <= INT_MAX) magnitude = magnitude * 10 + ((*text)[at] - '0');
  }
  if (at == digits) return 0;
  text->remove_prefix(at);
  return Saturated(magnitude, negative);
}

int ReadInteger(StringView value) { return TakeInteger(&value); }

int ReadSize(StringView value) {
  if (value == TEXT("stretch")) return SizeStretch;
  if (value == TEXT("auto")) return SizeAuto;
  return ReadInteger(value);
}

void ReadIntegers(StringView value, int* numbers, int count) {
  for (int i = 0; i < count; ++i) {
    numbers[i] = TakeInteger(&value);
    if (!value.empty()) value.remove_prefix(1);
  }
}

RECT ReadRect(StringView value) {
  int sides[4];
  ReadIntegers(value, sides, 4);
  return {sides[0], sides[1], sides[2], sides[3]};
}

POINT ReadPoint(StringView value) {
  int numbers[2];
  ReadIntegers(value, numbers, 2);
  return {numbers[0], numbers[1]};
}

DWORD ReadHexadecimal(StringView value) {
  constexpr DWORD kLargest = 0xFFFFFFFF;
  while (!value.empty() && IsBlank(value.front())) value.remove_prefix(1);
  if (BeginsHexNumber(value)) value.remove_prefix(2);
  ULONGLONG number = 0;
  for (; !value.empty() && HexDigit(value.front()) >= 0; value.remove_prefix(1)) {
    number = number * 16 + static_cast<ULONGLONG>(HexDigit(value.front()));
    if (number > kLargest) return kLargest;
  }
  return static_cast<DWORD>(number);
}

}  // namespace lumo
