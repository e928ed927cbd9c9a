// Views of the markup reader.
#pragma once

#include <nlohmann/json_fwd.hpp>

namespace vantakit {

// {"text"} → {"ok", "log" (names of the entries), "tree": list of [tag, [[name, value]…], [children…]]}
nlohmann::json MarkupLoadView(const nlohmann::json& input);
// {"text", "ops": list of [operation, argument]} → {"results"}
nlohmann::json MarkupNavigateView(const nlohmann::json& input);

}  // namespace vantakit
