#include <windows.h>

#include <cerrno>
#include <limits>
#include <string_view>

#include "winhost/machine/text.h"

namespace {

using View = std::u16string_view;

// The run-time folds to small letters, which decides how "_" and the letters compare.
WCHAR Fold(WCHAR c) {
  if (c >= u'A' && c <= u'Z') return static_cast<WCHAR>(c + 32);
  return c < 0x80 ? c : winhost::Upcase(c);
}

bool IsSpace(WCHAR c) { return c == u' ' || (c >= 9 && c <= 13); }

unsigned DigitOf(WCHAR c) {
  if (c >= u'0' && c <= u'9') return c - u'0';
  if (c >= u'a' && c <= u'z') return c - u'a' + 10u;
  if (c >= u'A' && c <= u'Z') return c - u'A' + 10u;
  return 99;
}

struct Number {
  bool negative = false;
  bool any = false;
  bool overflow = false;
  ULONGLONG magnitude = 0;
  const WCHAR* end = nullptr;
};

// As strtol reads: blanks, a sign, a prefix where the base allows it, digits. Above `most` the rest is only skipped.
Number ReadNumber(const WCHAR* text, int base, ULONGLONG most) {
  Number number;
  const WCHAR* at = text;
  while (IsSpace(*at)) ++at;
  if (*at == u'+' || *at == u'-') number.negative = *at++ == u'-';
  const bool hex = at[0] == u'0' && (at[1] == u'x' || at[1] == u'X') && DigitOf(at[2]) < 16;
  if ((base == 0 || base == 16) && hex) {
    at += 2;
    base = 16;
  } else if (base == 0) {
    base = *at == u'0' ? 8 : 10;
  }
  const auto radix = static_cast<unsigned>(base);
  for (unsigned digit; (digit = DigitOf(*at)) < radix; ++at) {
    number.any = true;
    if (number.magnitude > (most - digit) / radix) number.overflow = true;
    if (!number.overflow) number.magnitude = number.magnitude * radix + digit;
  }
  number.end = number.any ? at : text;
  return number;
}

bool IsBase(int base) {
  if (base == 0 || (base >= 2 && base <= 36)) return true;
  errno = EINVAL;
  return false;
}

LONGLONG ReadSigned(const WCHAR* text, WCHAR** end, int base, LONGLONG low, LONGLONG high) {
  const Number number = ReadNumber(text, base, static_cast<ULONGLONG>(high) + 1);
  if (end) *end = const_cast<WCHAR*>(number.end);
  if (number.overflow || (!number.negative && number.magnitude > static_cast<ULONGLONG>(high))) {
    errno = ERANGE;
    return number.negative ? low : high;
  }
  return static_cast<LONGLONG>(number.negative ? 0 - number.magnitude : number.magnitude);
}

}  // namespace

size_t wcslen(const WCHAR* text) { return View(text).size(); }

int wcscmp(const WCHAR* a, const WCHAR* b) { return wcsncmp(a, b, std::numeric_limits<size_t>::max()); }

int wcsncmp(const WCHAR* a, const WCHAR* b, size_t count) {
  for (; count > 0; ++a, ++b, --count) {
    if (*a != *b) return *a < *b ? -1 : 1;
    if (*a == 0) break;
  }
  return 0;
}

WCHAR* wcscpy(WCHAR* to, const WCHAR* from) {
  for (size_t i = 0; (to[i] = from[i]) != 0; ++i) {
  }
  return to;
}

WCHAR* wcsncpy(WCHAR* to, const WCHAR* from, size_t count) {
  size_t i = 0;
  for (; i < count && from[i] != 0; ++i) to[i] = from[i];
  for (; i < count; ++i) to[i] = 0;
  return to;
}

WCHAR* wcscat(WCHAR* to, const WCHAR* from) {
  wcscpy(to + wcslen(to), from);
  return to;
}

const WCHAR* wcschr(const WCHAR* text, WCHAR c) {
  for (;; ++text) {
    if (*text == c) return text;
    if (*text == 0) return nullptr;
  }
}
WCHAR* wcschr(WCHAR* text, WCHAR c) { return const_cast<WCHAR*>(wcschr(const_cast<const WCHAR*>(text), c)); }

const WCHAR* wcsrchr(const WCHAR* text, WCHAR c) {
  const WCHAR* last = nullptr;
  for (;; ++text) {
    if (*text == c) last = text;
    if (*text == 0) return last;
  }
}
WCHAR* wcsrchr(WCHAR* text, WCHAR c) { return const_cast<WCHAR*>(wcsrchr(const_cast<const WCHAR*>(text), c)); }

const WCHAR* wcsstr(const WCHAR* text, const WCHAR* part) {
  const std::size_t at = View(text).find(part);
  return at == View::npos ? nullptr : text + at;
}
WCHAR* wcsstr(WCHAR* text, const WCHAR* part) {
  return const_cast<WCHAR*>(wcsstr(const_cast<const WCHAR*>(text), part));
}

int _wcsicmp(const WCHAR* a, const WCHAR* b) { return _wcsnicmp(a, b, std::numeric_limits<size_t>::max()); }

int _wcsnicmp(const WCHAR* a, const WCHAR* b, size_t count) {
  for (; count > 0; ++a, ++b, --count) {
    const WCHAR first = Fold(*a), second = Fold(*b);
    if (first != second) return first < second ? -1 : 1;
    if (first == 0) break;
  }
  return 0;
}

LONG wcstol(const WCHAR* text, WCHAR** end, int base) {
  if (!IsBase(base)) return 0;
  using Limits = std::numeric_limits<LONG>;
  return static_cast<LONG>(ReadSigned(text, end, base, Limits::min(), Limits::max()));
}

ULONG wcstoul(const WCHAR* text, WCHAR** end, int base) {
  if (!IsBase(base)) return 0;
  const Number number = ReadNumber(text, base, std::numeric_limits<ULONG>::max());
  if (end) *end = const_cast<WCHAR*>(number.end);
  if (number.overflow) {
    errno = ERANGE;
    return std::numeric_limits<ULONG>::max();
  }
  const auto magnitude = static_cast<ULONG>(number.magnitude);
  return number.negative ? 0 - magnitude : magnitude;
}

int _wtoi(const WCHAR* text) { return wcstol(text, nullptr, 10); }

LONGLONG _wtoi64(const WCHAR* text) {
  using Limits = std::numeric_limits<LONGLONG>;
  return ReadSigned(text, nullptr, 10, Limits::min(), Limits::max());
}
