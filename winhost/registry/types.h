// Registry value types by name.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace winhost {

std::optional<std::uint32_t> RegistryType(std::string_view name);
// "REG_SZ" …; an unknown number in decimal.
std::string RegistryTypeName(std::uint32_t type);

}  // namespace winhost
