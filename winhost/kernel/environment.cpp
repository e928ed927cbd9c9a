#include "winhost/kernel/environment.h"

#include <unistd.h>
#include <windows.h>

#include <algorithm>
#include <map>
#include <mutex>

#include "winhost/machine/faults.h"
#include "winhost/machine/machine.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

// What this process set itself; no value: it removed the variable.
class OwnVariables {
 public:
  explicit OwnVariables(Machine&) {}
  void Set(std::u16string_view name, std::optional<std::u16string> value) {
    std::scoped_lock lock(lock_);
    values_[Upcase(name)] = std::move(value);
  }
  bool Get(std::u16string_view name, std::optional<std::u16string>* value) {
    std::scoped_lock lock(lock_);
    const auto found = values_.find(Upcase(name));
    if (found == values_.end()) return false;
    *value = found->second;
    return true;
  }

 private:
  std::mutex lock_;
  std::map<std::u16string, std::optional<std::u16string>> values_;
};

std::u16string Profile(const Facts& facts) {
  return (facts.AtLeast(6, 0) ? u"C:\\Users\\" : u"C:\\Documents and Settings\\") + Wide(facts.user);
}

std::optional<std::u16string> UsualVariable(std::u16string_view name, const Facts& facts) {
  const bool new_layout = facts.AtLeast(6, 0);
  const std::u16string profile = Profile(facts);
  const std::u16string local = profile + (new_layout ? u"\\AppData\\Local" : u"\\Local Settings");
  const std::pair<const char16_t*, std::u16string> rows[] = {
      {u"SystemRoot", u"C:\\Windows"},
      {u"windir", u"C:\\Windows"},
      {u"SystemDrive", u"C:"},
      {u"OS", u"Windows_NT"},
      {u"USERNAME", Wide(facts.user)},
      {u"COMPUTERNAME", Wide(facts.computer)},
      {u"USERPROFILE", profile},
      {u"TEMP", local + u"\\Temp"},
      {u"TMP", local + u"\\Temp"},
      {u"APPDATA", profile + (new_layout ? u"\\AppData\\Roaming" : u"\\Application Data")},
      {u"PATH", u"C:\\Windows\\system32;C:\\Windows"},
  };
  for (const auto& [usual, value] : rows) {
    if (EqualNoCase(name, usual)) return value;
  }
  return std::nullopt;
}

std::optional<std::u16string> LinuxVariable(std::u16string_view name) {
  static constexpr std::string_view kMeaningElse[] = {"HOME",   "PWD",  "OLDPWD", "SHELL",
                                                      "TMPDIR", "LANG", "TERM",   "USER"};
  const std::string wanted = Narrow(Upcase(name));
  for (std::string_view other : kMeaningElse) {
    if (wanted == other) return std::nullopt;
  }
  for (char** entry = environ; entry && *entry; ++entry) {
    const std::string_view text(*entry);
    const std::size_t cut = text.find('=');
    if (cut == text.npos || !EqualNoCase(Wide(text.substr(0, cut)), name)) continue;
    return Wide(text.substr(cut + 1));
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::u16string> EnvironmentVariable(std::u16string_view name) {
  Machine& machine = Machine::Current();
  std::optional<std::u16string> value;
  if (machine.Get<OwnVariables>().Get(name, &value)) return value;
  for (const auto& [key, text] : machine.facts().environment) {
    if (EqualNoCase(Wide(key), name)) return Wide(text);
  }
  if ((value = UsualVariable(name, machine.facts()))) return value;
  return LinuxVariable(name);
}

}  // namespace winhost

using namespace winhost;

DWORD GetEnvironmentVariableW(LPCWSTR name, LPWSTR buffer, DWORD length) {
  DWORD error = name ? PlannedFault("GetEnvironmentVariableW", name).value_or(0) : DWORD{ERROR_ENVVAR_NOT_FOUND};
  const std::optional<std::u16string> value = error == 0 ? EnvironmentVariable(name) : std::nullopt;
  if (!value) {
    SetLastError(error != 0 ? error : DWORD{ERROR_ENVVAR_NOT_FOUND});
    return 0;
  }
  if (length <= value->size()) return static_cast<DWORD>(value->size() + 1);
  std::copy_n(value->c_str(), value->size() + 1, buffer);
  // An empty value and no value both answer 0; this tells them apart.
  if (value->empty()) SetLastError(NO_ERROR);
  return static_cast<DWORD>(value->size());
}

BOOL SetEnvironmentVariableW(LPCWSTR name, LPCWSTR value) {
  if (!name || *name == 0 || wcschr(name, u'=')) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  Machine::Current().Get<OwnVariables>().Set(name, value ? std::optional<std::u16string>(value) : std::nullopt);
  return TRUE;
}

DWORD ExpandEnvironmentStringsW(LPCWSTR from, LPWSTR to, DWORD length) {
  std::u16string text;
  std::u16string_view rest(from);
  while (!rest.empty()) {
    const std::size_t begin = rest.find(u'%');
    const std::size_t end = begin == rest.npos ? rest.npos : rest.find(u'%', begin + 1);
    if (end == rest.npos) break;
    const auto value = EnvironmentVariable(rest.substr(begin + 1, end - begin - 1));
    // An unknown name stays as it is, and its second mark may begin another.
    text += rest.substr(0, begin);
    text += value ? *value : std::u16string(rest.substr(begin, end - begin));
    rest.remove_prefix(value ? end + 1 : end);
  }
  text += rest;
  if (to && length != 0) {
    const std::size_t copied = std::min<std::size_t>(text.size(), length - 1);
    std::copy_n(text.data(), copied, to);
    to[copied] = 0;
  }
  return static_cast<DWORD>(text.size() + 1);
}
