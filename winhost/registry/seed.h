// The machine's fact "registry": keys and values that are there from the start.
//
//   "registry": {"HKLM32\\Software\\Vendor": {"Path": "C:\\Tools", "Count": {"type": "REG_DWORD", "value": 5},
//                                             "Raw": {"type": "REG_BINARY", "hex": "00ff"}}}
//
// Roots: HKLM (the 64-bit or only view), HKLM32 (the 32-bit view), HKCU, HKCU32, HKCR, HKU. A plain text is a REG_SZ
// with its terminator; "terminated": false leaves it out. REG_MULTI_SZ takes a list. "hex" gives the bytes of any type.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include "winhost/machine/facts.h"
#include "winhost/registry/store.h"

namespace winhost {

// Puts what Windows keeps of the machine's adapters and every seed into the store, inside the caller's session. Throws
// std::runtime_error naming what is wrong.
void SeedRegistry(RegistryStore& store, const Facts& facts);
// One value as the fact writes it.
StoredValue ParseSeed(const std::string& name, const nlohmann::json& seed);

}  // namespace winhost
