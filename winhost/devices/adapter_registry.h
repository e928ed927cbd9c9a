// What Windows keeps in the registry about its network adapters: the entries of their device class and the list of
// network cards, made from the facts with the machine's registry.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include <string_view>

#include "winhost/machine/facts.h"

namespace winhost {

// In the form of the fact "registry". Throws std::runtime_error.
nlohmann::json AdapterKeys(const Facts& facts);

// Whether a key, as listings name it, is one of these or below: the machine's hardware and nothing a program did.
bool IsAdapterKey(std::u16string_view path);

}  // namespace winhost
