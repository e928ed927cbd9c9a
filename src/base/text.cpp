#include "base/text.h"

#include <wchar.h>

namespace vanta {

String FromUtf8(std::string_view utf8) {
  const int bytes = static_cast<int>(utf8.size());
  const int length = bytes ? MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, nullptr, 0) : 0;
  String text(static_cast<size_t>(length), 0);
  if (length) MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, text.data(), length);
  return text;
}

std::string ToUtf8(StringView text) {
  const int units = static_cast<int>(text.size());
  const int length = units ? WideCharToMultiByte(CP_UTF8, 0, text.data(), units, nullptr, 0, nullptr, nullptr) : 0;
  std::string utf8(static_cast<size_t>(length), 0);
  if (length) WideCharToMultiByte(CP_UTF8, 0, text.data(), units, utf8.data(), length, nullptr, nullptr);
  return utf8;
}

bool EqualAsciiNoCase(StringView a, StringView b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (AsciiLower(a[i]) != AsciiLower(b[i])) return false;
  }
  return true;
}

bool EqualNoCase(const String& a, const String& b) { return _wcsicmp(a.c_str(), b.c_str()) == 0; }

String ReplaceAll(String text, StringView from, StringView to) {
  for (size_t at = text.find(from); at != String::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
  return text;
}

}  // namespace vanta
