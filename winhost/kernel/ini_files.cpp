#include <windows.h>

#include <algorithm>

#include "winhost/kernel/ini_text.h"
#include "winhost/machine/faults.h"

namespace winhost {
namespace {

// A name without a folder means the Windows folder.
std::u16string WholePath(LPCWSTR file) {
  const std::u16string_view path(file);
  if (path.find_first_of(u"\\/:") != path.npos) return std::u16string(path);
  return u"C:\\Windows\\" + std::u16string(path);
}

DWORD ReadBytes(const std::u16string& path, std::string* bytes) {
  const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return GetLastError();
  char buffer[4096];
  DWORD got = 0;
  DWORD error = 0;
  do {
    if (!ReadFile(file, buffer, sizeof buffer, &got, nullptr)) error = GetLastError();
    bytes->append(buffer, got);
  } while (error == 0 && got != 0);
  CloseHandle(file);
  return error;
}

DWORD WriteBytes(const std::u16string& path, const std::string& bytes) {
  const HANDLE file =
      CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return GetLastError();
  DWORD written = 0;
  const bool ok =
      WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) && SetEndOfFile(file);
  const DWORD error = ok ? 0 : GetLastError();
  CloseHandle(file);
  return error;
}

DWORD ReadIni(LPCWSTR file, IniText* ini) {
  std::string bytes;
  const DWORD error = ReadBytes(WholePath(file), &bytes);
  if (error == 0) *ini = IniText::FromBytes(bytes);
  return error;
}

DWORD PutValue(std::u16string_view value, LPWSTR buffer, DWORD length) {
  const std::size_t copied = std::min<std::size_t>(value.size(), length - 1);
  std::copy_n(value.data(), copied, buffer);
  buffer[copied] = 0;
  return static_cast<DWORD>(copied);
}

// Names, each terminated, and an empty one at the end; cut so that both terminators fit.
DWORD PutList(const std::vector<std::u16string>& names, LPWSTR buffer, DWORD length) {
  std::u16string list;
  for (const std::u16string& name : names) list += name + u'\0';
  if (length < 2) {
    buffer[0] = 0;
    return 0;
  }
  const bool fits = list.size() + 1 <= length;
  const std::size_t copied = fits ? list.size() : length - 2;
  std::copy_n(list.data(), copied, buffer);
  buffer[copied] = 0;
  if (copied + 1 < length) buffer[copied + 1] = 0;
  return static_cast<DWORD>(copied);
}

// Blanks at a default's end are not handed out.
std::u16string_view Default(LPCWSTR fallback) {
  std::u16string_view text = fallback ? std::u16string_view(fallback) : std::u16string_view();
  while (!text.empty() && text.back() == u' ') text.remove_suffix(1);
  return text;
}

// A sign, then "0x", "0o", "0b" or decimal digits; what follows them is ignored, and sums wrap at 32 bits.
UINT ReadInteger(std::u16string_view text) {
  bool negative = false;
  if (!text.empty() && (text[0] == u'-' || text[0] == u'+')) {
    negative = text[0] == u'-';
    text.remove_prefix(1);
  }
  UINT base = 10;
  if (text.size() > 1 && text[0] == u'0') {
    base = text[1] == u'x' ? 16 : text[1] == u'o' ? 8 : text[1] == u'b' ? 2 : 10;
    if (base != 10) text.remove_prefix(2);
  }
  UINT value = 0;
  for (const char16_t c : text) {
    const UINT digit = c >= u'0' && c <= u'9'   ? c - u'0'
                       : c >= u'a' && c <= u'f' ? c - u'a' + 10u
                       : c >= u'A' && c <= u'F' ? c - u'A' + 10u
                                                : 99;
    if (digit >= base) break;
    value = value * base + digit;
  }
  return negative ? 0 - value : value;
}

}  // namespace
}  // namespace winhost

using namespace winhost;

DWORD GetPrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR fallback, LPWSTR buffer, DWORD length,
                               LPCWSTR file) {
  if (!buffer || length == 0) return 0;
  IniText ini;
  DWORD error = file ? PlannedFault("GetPrivateProfileStringW", file).value_or(0) : DWORD{ERROR_FILE_NOT_FOUND};
  if (error == 0) error = ReadIni(file, &ini);
  if (error != 0) SetLastError(error);
  if (!section) return PutList(ini.Sections(), buffer, length);
  if (!key) return PutList(ini.Keys(section), buffer, length);
  const auto value = ini.Value(section, key);
  if (!value && error == 0) SetLastError(ERROR_FILE_NOT_FOUND);
  return PutValue(value ? std::u16string_view(*value) : Default(fallback), buffer, length);
}

UINT GetPrivateProfileIntW(LPCWSTR section, LPCWSTR key, INT fallback, LPCWSTR file) {
  if (!section || !key) return static_cast<UINT>(fallback);
  if (const auto error = PlannedFault("GetPrivateProfileIntW", file ? file : u"")) {
    SetLastError(*error);
    return static_cast<UINT>(fallback);
  }
  WCHAR text[64];
  return GetPrivateProfileStringW(section, key, nullptr, text, 64, file) == 0 ? static_cast<UINT>(fallback)
                                                                              : ReadInteger(text);
}

BOOL WritePrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR value, LPCWSTR file) {
  IniText ini;
  DWORD error = file ? PlannedFault("WritePrivateProfileStringW", file).value_or(0) : DWORD{ERROR_ACCESS_DENIED};
  // Nothing at all asks to write out what Windows had cached; there is no cache here.
  if (error == 0 && !section) return TRUE;
  if (error == 0) {
    error = ReadIni(file, &ini);
    if (error == ERROR_FILE_NOT_FOUND) error = 0;
  }
  if (error == 0) {
    if (!key) {
      ini.RemoveSection(section);
    } else if (!value) {
      ini.RemoveKey(section, key);
    } else {
      ini.Set(section, key, value);
    }
    error = WriteBytes(WholePath(file), ini.ToBytes());
  }
  if (error != 0) SetLastError(error);
  return error == 0;
}
