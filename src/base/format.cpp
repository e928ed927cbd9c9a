#include "base/format.h"

namespace vanta::format_detail {
namespace {

struct Conversion {
  bool zero = false;
  size_t width = 0;
  bool half = false;
  WCHAR letter = 0;
};

Conversion EatConversion(StringView& rest) {
  Conversion conversion;
  auto eat = [&rest] {
    const WCHAR c = rest.front();
    rest.remove_prefix(1);
    return c;
  };
  if (rest.front() == TEXT('0')) conversion.zero = true;
  while (rest.front() >= TEXT('0') && rest.front() <= TEXT('9')) {
    conversion.width = conversion.width * 10 + static_cast<size_t>(eat() - TEXT('0'));
  }
  if (rest.front() == TEXT('h') || rest.front() == TEXT('l')) conversion.half = eat() == TEXT('h');
  if (rest.starts_with(TEXT("I64"))) rest.remove_prefix(3);
  conversion.letter = eat();
  return conversion;
}

void PutNumber(String& out, const Conversion& conversion, const Argument& argument) {
  const bool hex = conversion.letter == TEXT('x') || conversion.letter == TEXT('X');
  const WCHAR ten = conversion.letter == TEXT('X') ? TEXT('A') : TEXT('a');
  LONGLONG value = argument.number;
  if (conversion.half) value = conversion.letter == TEXT('d') ? static_cast<SHORT>(value) : static_cast<USHORT>(value);
  const bool negative = conversion.letter == TEXT('d') && argument.kind == Kind::Signed && value < 0;
  ULONGLONG rest = negative ? 0 - static_cast<ULONGLONG>(value) : static_cast<ULONGLONG>(value);
  const unsigned base = hex ? 16 : 10;
  WCHAR digits[24];
  size_t count = 0;
  do {
    const auto digit = static_cast<WCHAR>(rest % base);
    digits[count++] = static_cast<WCHAR>(digit < 10 ? TEXT('0') + digit : ten + (digit - 10));
    rest /= base;
  } while (rest);
  const size_t length = count + (negative ? 1 : 0);
  const size_t fill = conversion.width > length ? conversion.width - length : 0;
  if (!conversion.zero) out.append(fill, TEXT(' '));
  if (negative) out += TEXT('-');
  if (conversion.zero) out.append(fill, TEXT('0'));
  while (count) out += digits[--count];
}

}  // namespace

String Run(StringView format, const Argument* arguments) {
  String out;
  while (!format.empty()) {
    const size_t percent = format.find(TEXT('%'));
    out.append(format.substr(0, percent));
    if (percent == StringView::npos) break;
    format.remove_prefix(percent + 1);
    if (format.front() == TEXT('%')) {
      out += TEXT('%');
      format.remove_prefix(1);
      continue;
    }
    const Conversion conversion = EatConversion(format);
    const Argument& argument = *arguments++;
    if (conversion.letter == TEXT('s')) {
      out.append(argument.text);
    } else if (conversion.letter == TEXT('c')) {
      out += static_cast<WCHAR>(argument.number);
    } else {
      PutNumber(out, conversion, argument);
    }
  }
  return out;
}

}  // namespace vanta::format_detail
