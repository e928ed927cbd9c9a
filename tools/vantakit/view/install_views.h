// Views of the install engine's and the log's small rules.
#pragma once

#include <nlohmann/json_fwd.hpp>

namespace vantakit {

// {"a", "b"} → {"value"}
nlohmann::json VersionCompareView(const nlohmann::json& input);
// {"local": [year, month, day, hour, minute, second, millisecond], "r"} → {"startBoundary", "v1": {"beginYear",
// "beginMonth", "beginDay", "startHour", "startMinute"}}
nlohmann::json TaskFirstStartView(const nlohmann::json& input);
// {"time" (formatted), "tag", "message"} → {"text", "utf16le" (hex of the bytes written)}
nlohmann::json LogLineView(const nlohmann::json& input);
// {"text"} → {"size" (bytes), "data" (hex, as stored)}
nlohmann::json RegistryStringView(const nlohmann::json& input);

}  // namespace vantakit
