// Small reads below HKEY_LOCAL_MACHINE for the keys that describe hardware. Whatever cannot be read is missing.
#pragma once

#include <windows.h>

#include <vector>

#include "base/text.h"

namespace vanta {

// The names of the first `most` sub-keys of a key.
std::vector<String> SubKeysOf(const String& key, DWORD most);
// A REG_DWORD of four bytes.
bool ReadMachineDword(const String& key, const String& name, DWORD* number);
// As RegReadString.
bool ReadMachineText(const String& key, const String& name, String* text);

// The devices of the network cards that Windows has installed ("{…}"), of at most `most` cards.
std::vector<String> NetworkCardServices(DWORD most);

}  // namespace vanta
