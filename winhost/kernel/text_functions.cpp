#include <windows.h>

#include <algorithm>
#include <string_view>

#include "winhost/machine/text.h"

namespace {

using View = std::u16string_view;

int Sign(int value) { return value < 0 ? -1 : value > 0 ? 1 : 0; }

// Marks sort before digits, and digits before letters.
int ClassOf(char16_t c) {
  if (c >= u'0' && c <= u'9') return 1;
  const bool letter = (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || c >= 0xAA;
  return letter ? 2 : 0;
}

int CompareLetters(View a, View b) {
  for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
    const char16_t first = winhost::Upcase(a[i]), second = winhost::Upcase(b[i]);
    if (first == second) continue;
    const int by_class = ClassOf(first) - ClassOf(second);
    return Sign(by_class != 0 ? by_class : first - second);
  }
  return a.size() < b.size() ? -1 : a.size() > b.size() ? 1 : 0;
}

// Among equal letters a small one comes before its capital.
int CompareCase(View a, View b) {
  for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
    if (a[i] != b[i]) return a[i] > b[i] ? -1 : 1;
  }
  return 0;
}

int CompareByLocale(View a, View b, bool ignore_case) {
  const int letters = CompareLetters(a, b);
  return letters != 0 || ignore_case ? letters : CompareCase(a, b);
}

int CompareOrNull(LPCWSTR a, LPCWSTR b, bool ignore_case) {
  if (!a || !b) return a ? 1 : b ? -1 : 0;
  return CompareByLocale(a, b, ignore_case);
}

View Given(LPCWSTR text, int length) { return length < 0 ? View(text) : View(text, static_cast<std::size_t>(length)); }

bool AreTexts(LPCWSTR a, int a_length, LPCWSTR b, int b_length) {
  if (a && b && a_length >= -1 && b_length >= -1) return true;
  SetLastError(ERROR_INVALID_PARAMETER);
  return false;
}

}  // namespace

int lstrlenW(LPCWSTR text) { return text ? static_cast<int>(View(text).size()) : 0; }
int lstrlenA(LPCSTR text) { return text ? static_cast<int>(std::string_view(text).size()) : 0; }
int lstrcmpW(LPCWSTR a, LPCWSTR b) { return CompareOrNull(a, b, false); }
int lstrcmpiW(LPCWSTR a, LPCWSTR b) { return CompareOrNull(a, b, true); }

LPWSTR lstrcpyW(LPWSTR to, LPCWSTR from) { return to && from ? wcscpy(to, from) : nullptr; }

LPWSTR lstrcpynW(LPWSTR to, LPCWSTR from, int length) {
  if (!to || !from || length <= 0) return nullptr;
  int copied = 0;
  for (; copied < length - 1 && from[copied] != 0; ++copied) to[copied] = from[copied];
  to[copied] = 0;
  return to;
}

LPWSTR lstrcatW(LPWSTR to, LPCWSTR from) { return to && from ? wcscat(to, from) : nullptr; }

int CompareStringW(LCID, DWORD flags, LPCWSTR a, int a_length, LPCWSTR b, int b_length) {
  if (!AreTexts(a, a_length, b, b_length)) return 0;
  return CompareByLocale(Given(a, a_length), Given(b, b_length), (flags & NORM_IGNORECASE) != 0) + CSTR_EQUAL;
}

LCID GetUserDefaultLCID() { return MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US); }
LANGID GetUserDefaultLangID() { return MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US); }
