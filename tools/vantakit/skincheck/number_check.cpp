#include "tools/vantakit/skincheck/number_check.h"

#include <charconv>

#include "lumo/core/scaling.h"
#include "lumo/core/value_readers.h"

namespace vantakit {
namespace {

using lumo::StringView;
using lumo::ValueKind;

StringView Trim(StringView text) {
  while (!text.empty() && text.front() <= ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() <= ' ') text.remove_suffix(1);
  return text;
}

// Exactly `count` numbers, one separator after each but the last.
bool AreIntegers(StringView value, int count, bool* negative = nullptr) {
  value = Trim(value);
  for (int i = 0; i < count; ++i) {
    if (i > 0) {
      if (value.empty()) return false;
      value.remove_prefix(1);
    }
    const std::size_t before = value.size();
    const int number = lumo::TakeInteger(&value);
    if (value.size() == before) return false;
    if (negative && number < 0) *negative = true;
  }
  return value.empty();
}

bool IsDecimal(StringView value) {
  const std::string text = vanta::ToUtf8(value);
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
  return error == std::errc() && end == text.data() + text.size() && number > 0;
}

std::string ReadsAs(StringView value) { return "it reads as " + std::to_string(lumo::ReadInteger(value)); }

std::string WhyNoSize(StringView value) {
  if (value == TEXT("stretch") || value == TEXT("auto")) return {};
  bool negative = false;
  if (!AreIntegers(value, 1, &negative)) return "neither \"stretch\" nor \"auto\" nor a number; " + ReadsAs(value);
  const int number = lumo::ReadInteger(value);
  if (negative && number != lumo::SizeStretch && number != lumo::SizeAuto) return "a size below 0 is passed over";
  return {};
}

std::string WhyNoLength(StringView value, int count, const char* shape) {
  bool negative = false;
  if (!AreIntegers(value, count, &negative)) return shape;
  return negative ? "a number below 0 is passed over" : std::string();
}

}  // namespace

std::string WhyNoNumber(ValueKind kind, StringView value) {
  switch (kind) {
    case ValueKind::Integer:
      return AreIntegers(value, 1) ? std::string() : "no whole number; " + ReadsAs(value);
    case ValueKind::Boolean:
      return AreIntegers(value, 1) ? std::string() : "neither 0 nor 1; " + ReadsAs(value);
    case ValueKind::Length:
      return WhyNoLength(value, 1, "no whole number");
    case ValueKind::Extent:
      return WhyNoLength(value, 2, "not the two numbers width,height");
    case ValueKind::Decimal:
      return IsDecimal(value) ? std::string() : "no decimal number above 0";
    case ValueKind::Size:
      return WhyNoSize(value);
    case ValueKind::Rect:
      return AreIntegers(value, 4) ? std::string() : "not the four numbers left,top,right,bottom";
    case ValueKind::Point:
      return AreIntegers(value, 2) ? std::string() : "not the two numbers x,y";
    default:
      return {};
  }
}

}  // namespace vantakit
