// The text types of the setup: UTF-16 on both targets, never a stream, never a locale.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace vanta {

using String = std::basic_string<WCHAR>;
using StringView = std::basic_string_view<WCHAR>;

// UTF-8 to UTF-16 and back through the system's conversion; ill-formed input becomes U+FFFD. Never fails.
String FromUtf8(std::string_view utf8);
std::string ToUtf8(StringView text);

// A to Z only; what the system compares with its own tables it compares itself.
constexpr WCHAR AsciiLower(WCHAR c) { return c >= TEXT('A') && c <= TEXT('Z') ? static_cast<WCHAR>(c + 32) : c; }
bool EqualAsciiNoCase(StringView a, StringView b);
// As _wcsicmp: the run-time's comparison without regard to case.
bool EqualNoCase(const String& a, const String& b);

String ReplaceAll(String text, StringView from, StringView to);

}  // namespace vanta
