// One entry of the fact "adapters".
#pragma once

#include <nlohmann/json_fwd.hpp>

#include "winhost/devices/hardware.h"

namespace winhost {

// The `index`th entry; an empty object is a plain wired adapter. Throws std::runtime_error.
AdapterFacts ReadAdapterFacts(const nlohmann::json& fact, std::size_t index);

// Twelve hexadecimal digits, with or without ":" or "-" between the bytes. Throws std::runtime_error.
MacAddress ParseMac(const std::string& text);

}  // namespace winhost
