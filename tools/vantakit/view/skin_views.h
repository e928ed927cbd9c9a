// Views of the skin package: how paths are written, what they find, how texts are read.
#pragma once

#include <nlohmann/json_fwd.hpp>

namespace vantakit {

// {"path"} → {"found", "path" ("" when not found)}
nlohmann::json SkinNormaliseView(const nlohmann::json& input);
// {"entries", "path"} → {"entry" (null: none)}
nlohmann::json SkinLookupView(const nlohmann::json& input);
// {"utf8"} → {"table" (as stored), "strings" (as looked up)}
nlohmann::json SkinTableView(const nlohmann::json& input);

}  // namespace vantakit
