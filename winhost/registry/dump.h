// The whole registry of a machine, for tools and tests: every stored key and value.
#pragma once

#include <string>
#include <vector>

#include <nlohmann/json_fwd.hpp>

#include "winhost/registry/store.h"

namespace winhost {

struct ListedKey {
  // As the 64-bit (or only) view sees it, "HKLM\SOFTWARE\Vendor"; a key that only the 32-bit view reaches by that name
  // has the root "HKLM32" or "HKCU32".
  std::u16string path;
  std::vector<StoredValue> values;
};

// Keys by path, values in the order of their making. Keys that every Windows has are listed only with values, those of
// its network adapters not at all. A machine whose registry nothing has used yet gives none, and is left without one.
std::vector<ListedKey> ListRegistry(Machine& machine);

// Text up to the terminator, a number in decimal, a list, or hexadecimal digits, as the type and length allow.
nlohmann::json DecodedValue(const StoredValue& value);
// {"HKLM32\\SOFTWARE\\Vendor": {"Path": {"type": "REG_SZ", "bytes": 16, "value": "C:\\Tools"}}}
nlohmann::json RegistryAsJson(Machine& machine);

}  // namespace winhost
