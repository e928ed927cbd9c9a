#include <windows.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "winhost/machine/faults.h"
#include "winhost/machine/text.h"

namespace {

int Fail(DWORD error) {
  SetLastError(error);
  return 0;
}

// Windows-1252 where it differs from Latin-1; 0: the byte means itself.
constexpr char16_t kHigh1252[32] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                    0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

char16_t From1252(unsigned char byte) {
  const bool high = byte >= 0x80 && byte < 0xA0;
  return high && kHigh1252[byte - 0x80] ? kHigh1252[byte - 0x80] : byte;
}

bool To1252(char16_t c, char* byte) {
  for (int i = 0; i < 32; ++i) {
    if (kHigh1252[i] == c) {
      *byte = static_cast<char>(0x80 + i);
      return true;
    }
  }
  *byte = static_cast<char>(c);
  return c < 0x100 && !(c >= 0x80 && c < 0xA0 && kHigh1252[c - 0x80]);
}

bool IsUtf8Page(UINT code_page) {
  return code_page == CP_UTF8 || code_page == CP_ACP || code_page == CP_OEMCP || code_page == CP_THREAD_ACP;
}

// U+FFFD that the text did not spell out itself means that something was ill-formed.
std::size_t CountReplacements(std::u16string_view text) {
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), u'\uFFFD'));
}

std::size_t CountSpeltReplacements(std::string_view bytes) {
  std::size_t count = 0;
  for (std::size_t at = 0; (at = bytes.find("\xEF\xBF\xBD", at)) != bytes.npos; at += 3) ++count;
  return count;
}

template <class Text, class Char>
int PutText(const Text& text, Char* buffer, int length) {
  if (length == 0) return static_cast<int>(text.size());
  if (text.size() > static_cast<std::size_t>(length)) {
    std::copy_n(text.begin(), length, buffer);
    return Fail(ERROR_INSUFFICIENT_BUFFER);
  }
  std::copy(text.begin(), text.end(), buffer);
  return static_cast<int>(text.size());
}

bool ToWide(UINT code_page, std::string_view bytes, std::u16string* text) {
  if (IsUtf8Page(code_page)) {
    *text = winhost::Wide(bytes);
    return CountReplacements(*text) == CountSpeltReplacements(bytes);
  }
  bool valid = true;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (code_page == 20127) {
      valid = valid && byte < 0x80;
      text->push_back(byte & 0x7F);
    } else {
      text->push_back(From1252(byte));
    }
  }
  return valid;
}

// False when a character had no place in the code page, or was half a surrogate pair.
bool ToBytes(UINT code_page, std::u16string_view text, char replacement, std::string* bytes) {
  if (IsUtf8Page(code_page)) {
    *bytes = winhost::Narrow(text);
    return CountSpeltReplacements(*bytes) == CountReplacements(text);
  }
  bool whole = true;
  for (const char16_t c : text) {
    char byte = 0;
    const bool fits = code_page == 20127 ? c < 0x80 && ((byte = static_cast<char>(c)), true) : To1252(c, &byte);
    bytes->push_back(fits ? byte : replacement);
    whole = whole && fits;
  }
  return whole;
}

bool IsKnownPage(UINT code_page) { return IsUtf8Page(code_page) || code_page == 1252 || code_page == 20127; }

}  // namespace

int MultiByteToWideChar(UINT code_page, DWORD flags, LPCSTR bytes, int byte_count, LPWSTR text, int text_length) {
  if (const auto error = winhost::PlannedFault("MultiByteToWideChar")) return Fail(*error);
  const bool arguments = bytes && byte_count != 0 && byte_count >= -1 && text_length >= 0 && (text || text_length == 0);
  if (!arguments || !IsKnownPage(code_page)) return Fail(ERROR_INVALID_PARAMETER);
  if (code_page == CP_UTF8 && (flags & ~static_cast<DWORD>(MB_ERR_INVALID_CHARS)) != 0)
    return Fail(ERROR_INVALID_FLAGS);
  const std::string_view given = byte_count == -1 ? std::string_view(bytes, std::string_view(bytes).size() + 1)
                                                  : std::string_view(bytes, static_cast<std::size_t>(byte_count));
  std::u16string wide;
  if (!ToWide(code_page, given, &wide) && (flags & MB_ERR_INVALID_CHARS)) return Fail(ERROR_NO_UNICODE_TRANSLATION);
  return PutText(wide, text, text_length);
}

int WideCharToMultiByte(UINT code_page, DWORD flags, LPCWSTR text, int text_length, LPSTR bytes, int byte_count,
                        LPCSTR default_char, LPBOOL used_default) {
  if (const auto error = winhost::PlannedFault("WideCharToMultiByte")) return Fail(*error);
  const bool arguments = text && text_length != 0 && text_length >= -1 && byte_count >= 0 && (bytes || byte_count == 0);
  if (!arguments || !IsKnownPage(code_page)) return Fail(ERROR_INVALID_PARAMETER);
  if (code_page == CP_UTF8 && (default_char || used_default)) return Fail(ERROR_INVALID_PARAMETER);
  if (code_page == CP_UTF8 && (flags & ~static_cast<DWORD>(WC_ERR_INVALID_CHARS)) != 0)
    return Fail(ERROR_INVALID_FLAGS);
  const std::u16string_view given = text_length == -1
                                        ? std::u16string_view(text, std::u16string_view(text).size() + 1)
                                        : std::u16string_view(text, static_cast<std::size_t>(text_length));
  std::string narrow;
  const bool whole = ToBytes(code_page, given, default_char ? *default_char : '?', &narrow);
  if (used_default) *used_default = !whole;
  if (!whole && (flags & WC_ERR_INVALID_CHARS)) return Fail(ERROR_NO_UNICODE_TRANSLATION);
  return PutText(narrow, bytes, byte_count);
}

UINT GetACP() { return CP_UTF8; }
