// The shell's string searches and comparisons.
#include <shlwapi.h>

#include <algorithm>
#include <string_view>

#include "winhost/machine/text.h"

namespace {

using View = std::u16string_view;
using winhost::Upcase;

LPWSTR At(LPCWSTR text, std::size_t index) { return index == View::npos ? nullptr : const_cast<LPWSTR>(text) + index; }

WCHAR Same(WCHAR c) { return c; }
WCHAR Folded(WCHAR c) { return Upcase(c); }

LPWSTR Search(LPCWSTR text, LPCWSTR wanted, WCHAR (*fold)(WCHAR)) {
  if (!text || !wanted || !*wanted) return nullptr;
  const View in(text), what(wanted);
  const auto equal = [fold](WCHAR a, WCHAR b) { return fold(a) == fold(b); };
  const auto found = std::search(in.begin(), in.end(), what.begin(), what.end(), equal);
  return found == in.end() ? nullptr : At(text, static_cast<std::size_t>(found - in.begin()));
}

int Compare(LPCWSTR a, LPCWSTR b, std::size_t chars, WCHAR (*fold)(WCHAR)) {
  for (std::size_t i = 0; i < chars; ++i) {
    const int difference = static_cast<int>(fold(a[i])) - static_cast<int>(fold(b[i]));
    if (difference != 0 || !a[i]) return difference < 0 ? -1 : difference > 0;
  }
  return 0;
}

std::size_t Count(int chars) { return static_cast<std::size_t>(std::max(chars, 0)); }

}  // namespace

LPWSTR StrChrW(LPCWSTR text, WCHAR wanted) { return text && wanted ? At(text, View(text).find(wanted)) : nullptr; }

LPWSTR StrChrIW(LPCWSTR text, WCHAR wanted) {
  const WCHAR one[] = {wanted, 0};
  return StrStrIW(text, one);
}

LPWSTR StrRChrW(LPCWSTR text, LPCWSTR end, WCHAR wanted) {
  if (!text) return nullptr;
  const View in = end ? View(text, static_cast<std::size_t>(std::max(end, text) - text)) : View(text);
  return At(text, in.rfind(wanted));
}

LPWSTR StrStrW(LPCWSTR text, LPCWSTR wanted) { return Search(text, wanted, Same); }
LPWSTR StrStrIW(LPCWSTR text, LPCWSTR wanted) { return Search(text, wanted, Folded); }

int StrCmpW(LPCWSTR a, LPCWSTR b) { return Compare(a, b, View::npos, Same); }
int StrCmpIW(LPCWSTR a, LPCWSTR b) { return Compare(a, b, View::npos, Folded); }
int StrCmpNW(LPCWSTR a, LPCWSTR b, int chars) { return Compare(a, b, Count(chars), Same); }
int StrCmpNIW(LPCWSTR a, LPCWSTR b, int chars) { return Compare(a, b, Count(chars), Folded); }

LPWSTR StrCpyNW(LPWSTR to, LPCWSTR from, int chars) {
  if (!to || !from || chars <= 0) return to;
  const std::size_t length = std::min(View(from).size(), Count(chars) - 1);
  std::copy_n(from, length, to);
  to[length] = 0;
  return to;
}

int StrToIntW(LPCWSTR text) {
  if (!text) return 0;
  const bool negative = *text == u'-';
  unsigned value = 0;
  for (text += negative; *text >= u'0' && *text <= u'9'; ++text) value = value * 10 + (*text - u'0');
  return static_cast<int>(negative ? 0 - value : value);
}

BOOL StrTrimW(LPWSTR text, LPCWSTR characters) {
  if (!text || !characters) return FALSE;
  const View all(text);
  const std::size_t first = std::min(all.find_first_not_of(characters), all.size());
  const std::size_t last = all.find_last_not_of(characters);
  const std::size_t length = last == View::npos ? 0 : last - first + 1;
  const bool trimmed = length != all.size();
  std::copy_n(text + first, length, text);
  text[length] = 0;
  return trimmed;
}
