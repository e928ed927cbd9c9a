#include "winhost/machine/text.h"

#include <cwctype>

namespace winhost {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

// Takes one code point off the front; an ill-formed sequence costs its maximal valid prefix and yields U+FFFD.
char32_t EatUtf8(std::string_view& rest) {
  const auto lead = static_cast<unsigned char>(rest[0]);
  rest.remove_prefix(1);
  if (lead < 0x80) return lead;
  if (lead < 0xC2 || lead > 0xF4) return kReplacement;
  const int more = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
  char32_t value = lead & (0x3F >> more);
  unsigned char low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  unsigned char high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  for (int i = 0; i < more; ++i) {
    if (rest.empty()) return kReplacement;
    const auto next = static_cast<unsigned char>(rest[0]);
    if (next < low || next > high) return kReplacement;
    low = 0x80;
    high = 0xBF;
    value = (value << 6) | (next & 0x3F);
    rest.remove_prefix(1);
  }
  return value;
}

void PutUtf8(std::string& out, char32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | (c >> 12));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (c >> 18));
    out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

}  // namespace

std::u16string Wide(std::string_view utf8) {
  std::u16string out;
  out.reserve(utf8.size());
  while (!utf8.empty()) {
    const char32_t c = EatUtf8(utf8);
    if (c < 0x10000) {
      out += static_cast<char16_t>(c);
    } else {
      out += static_cast<char16_t>(0xD7C0 + (c >> 10));
      out += static_cast<char16_t>(0xDC00 + (c & 0x3FF));
    }
  }
  return out;
}

std::string Narrow(std::u16string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    const bool high = unit >= 0xD800 && unit < 0xDC00;
    const bool pair = high && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000;
    if (pair) {
      PutUtf8(out, 0x10000 + ((static_cast<char32_t>(unit) - 0xD800) << 10) + (text[++i] - 0xDC00));
    } else {
      PutUtf8(out, unit >= 0xD800 && unit < 0xE000 ? kReplacement : unit);
    }
  }
  return out;
}

char16_t Upcase(char16_t c) {
  if (c < 0x80) return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - 0x20) : c;
  // The system's table maps letters one to one; what has no such capital (ß, ŉ) stays.
  static const locale_t kLocale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  const wint_t upper = kLocale ? towupper_l(c, kLocale) : c;
  return upper < 0x10000 ? static_cast<char16_t>(upper) : c;
}

std::u16string Upcase(std::u16string_view text) {
  std::u16string out(text);
  for (char16_t& c : out) c = Upcase(c);
  return out;
}

bool EqualNoCase(std::u16string_view a, std::u16string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (a[i] != b[i] && Upcase(a[i]) != Upcase(b[i])) return false;
  }
  return true;
}

}  // namespace winhost
