// One entry of the fact "disks".
#pragma once

#include <nlohmann/json_fwd.hpp>

#include "winhost/devices/hardware.h"

namespace winhost {

// An empty object is a plain built-in SATA drive. Throws std::runtime_error.
DiskFacts ReadDiskFacts(const nlohmann::json& fact, const Facts& facts);

}  // namespace winhost
