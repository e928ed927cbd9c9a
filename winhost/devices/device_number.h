// Devices that are numbered by their name.
#pragma once

#include <optional>
#include <string_view>

namespace winhost {

// The number in "PhysicalDrive12"; none for another name, or without digits. Letter case does not matter.
std::optional<unsigned> DeviceNumber(std::u16string_view name, std::u16string_view before, std::u16string_view after);

}  // namespace winhost
