#include <windows.h>
#include <wininet.h>

#include <optional>
#include <string_view>

#include "winhost/machine/faults.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

struct Parts {
  INTERNET_SCHEME scheme;
  std::u16string_view host;
  INTERNET_PORT port;
  std::u16string_view path;  // with query and fragment
};

struct SchemeRow {
  std::u16string_view name;
  INTERNET_SCHEME scheme;
  INTERNET_PORT port;
};
constexpr SchemeRow kSchemes[] = {{u"http", INTERNET_SCHEME_HTTP, INTERNET_DEFAULT_HTTP_PORT},
                                  {u"https", INTERNET_SCHEME_HTTPS, INTERNET_DEFAULT_HTTPS_PORT}};

std::optional<INTERNET_PORT> ReadPort(std::u16string_view digits, INTERNET_PORT otherwise) {
  unsigned port = 0;
  if (digits.empty()) return otherwise;
  for (const char16_t c : digits) {
    if (c < u'0' || c > u'9' || port > 65535) return std::nullopt;
    port = port * 10 + static_cast<unsigned>(c - u'0');
  }
  if (port > 65535) return std::nullopt;
  return static_cast<INTERNET_PORT>(port);
}

// ERROR_SUCCESS, or what is wrong with the URL.
DWORD Split(std::u16string_view url, Parts& parts) {
  const std::size_t colon = url.find(u':');
  if (colon == url.npos) return ERROR_INTERNET_UNRECOGNIZED_SCHEME;
  const SchemeRow* row = nullptr;
  for (const SchemeRow& known : kSchemes) {
    if (EqualNoCase(url.substr(0, colon), known.name)) row = &known;
  }
  if (!row) return ERROR_INTERNET_UNRECOGNIZED_SCHEME;
  url.remove_prefix(colon + 1);
  if (!url.starts_with(u"//")) return ERROR_INTERNET_INVALID_URL;
  url.remove_prefix(2);
  const std::size_t end = url.find_first_of(u"/?#");
  std::u16string_view authority = url.substr(0, end);
  parts.path = end == url.npos ? std::u16string_view() : url.substr(end);
  authority.remove_prefix(authority.rfind(u'@') + 1);  // npos + 1 is 0
  const std::size_t mark = authority.rfind(u':');
  const auto port = ReadPort(mark == authority.npos ? std::u16string_view() : authority.substr(mark + 1), row->port);
  parts.host = authority.substr(0, mark);
  if (!port || parts.host.empty()) return ERROR_INTERNET_INVALID_URL;
  parts.scheme = row->scheme;
  parts.port = *port;
  return ERROR_SUCCESS;
}

bool Put(std::u16string_view text, LPWSTR buffer, DWORD& length) {
  if (!buffer) return true;
  if (text.size() >= length) return false;
  text.copy(buffer, text.size());
  buffer[text.size()] = 0;
  length = static_cast<DWORD>(text.size());
  return true;
}

DWORD Crack(std::u16string_view url, DWORD flags, URL_COMPONENTSW* parts) {
  if (!parts || parts->dwStructSize != sizeof *parts) return ERROR_INVALID_PARAMETER;
  const bool others = parts->dwSchemeLength || parts->dwUserNameLength || parts->dwPasswordLength ||
                      parts->dwExtraInfoLength || !parts->lpszHostName || !parts->lpszUrlPath;
  if (flags || others) return ERROR_NOT_SUPPORTED;
  Parts found;
  if (const DWORD wrong = Split(url, found)) return wrong;
  if (!Put(found.host, parts->lpszHostName, parts->dwHostNameLength)) return ERROR_INSUFFICIENT_BUFFER;
  if (!Put(found.path, parts->lpszUrlPath, parts->dwUrlPathLength)) return ERROR_INSUFFICIENT_BUFFER;
  parts->nScheme = found.scheme;
  parts->nPort = found.port;
  return ERROR_SUCCESS;
}

}  // namespace
}  // namespace winhost

BOOL InternetCrackUrlW(LPCWSTR url, DWORD characters, DWORD flags, LPURL_COMPONENTSW parts) {
  if (!url) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  const std::u16string_view text = characters ? std::u16string_view(url, characters) : std::u16string_view(url);
  const auto planned = winhost::PlannedFault("InternetCrackUrlW", text);
  const DWORD error = planned ? *planned : winhost::Crack(text, flags, parts);
  if (error != ERROR_SUCCESS) SetLastError(error);
  return error == ERROR_SUCCESS;
}
