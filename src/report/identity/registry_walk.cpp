#include "report/identity/registry_walk.h"

#include <shlwapi.h>

#include "base/registry.h"
#include "base/unique.h"

namespace vanta {
namespace {

constexpr DWORD kLongestKeyName = 256;  // with terminator
constexpr WCHAR kNetworkCards[] = TEXT("SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\NetworkCards");

}  // namespace

std::vector<String> SubKeysOf(const String& key, DWORD most) {
  std::vector<String> names;
  UniqueKey opened;
  if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, key.c_str(), 0, KEY_ENUMERATE_SUB_KEYS, opened.Put()) != ERROR_SUCCESS) {
    return names;
  }
  for (DWORD index = 0; index < most; ++index) {
    WCHAR name[kLongestKeyName];
    DWORD length = kLongestKeyName;
    if (RegEnumKeyExW(opened.Get(), index, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
    names.emplace_back(name, length);
  }
  return names;
}

bool ReadMachineDword(const String& key, const String& name, DWORD* number) {
  DWORD type = REG_NONE;
  DWORD size = sizeof *number;
  const DWORD status = SHGetValueW(HKEY_LOCAL_MACHINE, key.c_str(), name.c_str(), &type, number, &size);
  return status == ERROR_SUCCESS && type == REG_DWORD && size == sizeof *number;
}

bool ReadMachineText(const String& key, const String& name, String* text) {
  return RegReadString(HKEY_LOCAL_MACHINE, key, name, text);
}

std::vector<String> NetworkCardServices(DWORD most) {
  std::vector<String> services;
  const String cards = kNetworkCards;
  for (const String& card : SubKeysOf(cards, most)) {
    String service;
    if (ReadMachineText(cards + TEXT('\\') + card, TEXT("ServiceName"), &service) && !service.empty()) {
      services.push_back(std::move(service));
    }
  }
  return services;
}

}  // namespace vanta
