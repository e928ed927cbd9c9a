#include <windows.h>
#include <wininet.h>

#include <algorithm>
#include <string_view>

#include "winhost/machine/faults.h"
#include "winhost/machine/text.h"
#include "winhost/net/internet_objects.h"

namespace winhost {
namespace {

template <class T>
std::shared_ptr<T> As(HINTERNET handle) {
  const auto object = std::dynamic_pointer_cast<InternetObject>(FindObject(handle));
  if (!object) return nullptr;  // the last error says so
  auto wanted = std::dynamic_pointer_cast<T>(object);
  if (!wanted) SetLastError(ERROR_INTERNET_INCORRECT_HANDLE_TYPE);
  return wanted;
}

BOOL Answer(DWORD error) {
  if (error != ERROR_SUCCESS) SetLastError(error);
  return error == ERROR_SUCCESS;
}

HINTERNET Failed(DWORD error) {
  SetLastError(error);
  return nullptr;
}

bool IsControl(unsigned char c) { return c < 0x20 || c == 0x7F; }

// As it goes over the wire: blanks and what is not ASCII (as UTF-8) by their hexadecimal digits, all else unchanged.
std::string Target(std::u16string_view path) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string target = path.starts_with(u'/') ? "" : "/";
  for (const char c : Narrow(path)) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte > 0x20 && byte < 0x7F) {
      target += c;
    } else {
      target += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    }
  }
  return target;
}

std::vector<std::string> HeaderLines(std::u16string_view block) {
  std::vector<std::string> lines;
  while (!block.empty()) {
    const std::size_t end = block.find(u'\n');
    std::u16string_view line = block.substr(0, end);
    block.remove_prefix(end == block.npos ? block.size() : end + 1);
    if (line.ends_with(u'\r')) line.remove_suffix(1);
    if (!line.empty()) lines.push_back(Narrow(line));
  }
  return lines;
}

BOOL GiveText(const std::string& utf8, LPVOID buffer, LPDWORD bytes) {
  const std::u16string text = Wide(utf8);
  const auto needed = static_cast<DWORD>((text.size() + 1) * sizeof(WCHAR));
  if (!buffer || *bytes < needed) {
    *bytes = needed;
    return Answer(ERROR_INSUFFICIENT_BUFFER);
  }
  std::copy_n(text.c_str(), text.size() + 1, static_cast<WCHAR*>(buffer));
  *bytes = needed - static_cast<DWORD>(sizeof(WCHAR));
  return TRUE;
}

}  // namespace
}  // namespace winhost

using namespace winhost;

HINTERNET InternetOpenW(LPCWSTR agent, DWORD access_type, LPCWSTR proxy, LPCWSTR bypass, DWORD flags) {
  if (const auto error = PlannedFault("InternetOpenW")) return Failed(*error);
  if (access_type != INTERNET_OPEN_TYPE_PRECONFIG || proxy || bypass || flags) return Failed(ERROR_NOT_SUPPORTED);
  auto session = std::make_shared<InternetSession>();
  if (agent) session->SetAgent(Narrow(agent));
  return MakeHandle(std::move(session));
}

BOOL InternetSetOptionW(HINTERNET handle, DWORD option, LPVOID value, DWORD bytes) {
  if (const auto error = PlannedFault("InternetSetOptionW")) return Answer(*error);
  const auto session = As<InternetSession>(handle);
  return session && Answer(session->SetOption(option, value, bytes));
}

HINTERNET InternetConnectW(HINTERNET handle, LPCWSTR host, INTERNET_PORT port, LPCWSTR user, LPCWSTR password,
                           DWORD service, DWORD flags, DWORD_PTR) {
  if (!host || !*host) return Failed(ERROR_INVALID_PARAMETER);
  if (const auto error = PlannedFault("InternetConnectW", host)) return Failed(*error);
  const auto session = As<InternetSession>(handle);
  if (!session) return nullptr;
  if (user || password || service != INTERNET_SERVICE_HTTP || flags) return Failed(ERROR_NOT_SUPPORTED);
  return MakeHandle(std::make_shared<InternetConnection>(session->Options(), Narrow(host), port));
}

HINTERNET HttpOpenRequestW(HINTERNET handle, LPCWSTR verb, LPCWSTR path, LPCWSTR version, LPCWSTR referrer,
                           LPCWSTR* accept_types, DWORD flags, DWORD_PTR) {
  const std::u16string_view object = path ? path : u"";
  if (const auto error = PlannedFault("HttpOpenRequestW", object)) return Failed(*error);
  auto connection = As<InternetConnection>(handle);
  if (!connection) return nullptr;
  constexpr DWORD kNeeded = INTERNET_FLAG_NO_AUTO_REDIRECT | INTERNET_FLAG_NO_COOKIES;
  constexpr DWORD kKnown = kNeeded | INTERNET_FLAG_SECURE | INTERNET_FLAG_KEEP_CONNECTION;
  if (version || referrer || accept_types) return Failed(ERROR_NOT_SUPPORTED);
  if ((flags & kNeeded) != kNeeded || (flags & ~kKnown)) return Failed(ERROR_NOT_SUPPORTED);
  const std::string word = verb && *verb ? Narrow(verb) : "GET";
  const bool plain = std::ranges::all_of(word, [](char c) { return c > ' ' && c < 0x7F; });
  const bool controls =
      std::ranges::any_of(object, [](char16_t c) { return c < 0x80 && IsControl(static_cast<unsigned char>(c)); });
  if (!plain || controls) return Failed(ERROR_INVALID_PARAMETER);
  const bool secure = (flags & INTERNET_FLAG_SECURE) != 0;
  return MakeHandle(std::make_shared<InternetRequest>(std::move(connection), word, Target(object), secure));
}

BOOL HttpSendRequestW(HINTERNET handle, LPCWSTR headers, DWORD characters, LPVOID body, DWORD bytes) {
  const auto request = As<InternetRequest>(handle);
  if (!request) return FALSE;
  if (const auto error = PlannedFault("HttpSendRequestW", Wide(request->Url()))) return Answer(*error);
  const std::u16string_view block = !headers                               ? std::u16string_view()
                                    : characters == static_cast<DWORD>(-1) ? std::u16string_view(headers)
                                                                           : std::u16string_view(headers, characters);
  std::string content = body ? std::string(static_cast<const char*>(body), bytes) : std::string();
  return Answer(request->Send(HeaderLines(block), std::move(content)));
}

BOOL HttpQueryInfoW(HINTERNET handle, DWORD what, LPVOID buffer, LPDWORD bytes, LPDWORD index) {
  const auto request = As<InternetRequest>(handle);
  if (!request) return FALSE;
  if (const auto error = PlannedFault("HttpQueryInfoW", Wide(request->Url()))) return Answer(*error);
  if (!bytes || index) return Answer(ERROR_INVALID_PARAMETER);
  if (what != HTTP_QUERY_STATUS_CODE && what != HTTP_QUERY_LOCATION) return Answer(ERROR_NOT_SUPPORTED);
  bool found = false;
  const std::string text = what == HTTP_QUERY_STATUS_CODE ? request->Status(found) : request->Header("Location", found);
  return found ? GiveText(text, buffer, bytes) : Answer(ERROR_HTTP_HEADER_NOT_FOUND);
}

BOOL InternetCloseHandle(HINTERNET handle) {
  const auto object = As<InternetObject>(handle);
  if (!object) return FALSE;
  object->Close();
  return CloseHandle(handle);
}
