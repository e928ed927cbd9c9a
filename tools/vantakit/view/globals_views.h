// Views of the skin's named fonts, colours and themes.
#pragma once

#include <nlohmann/json_fwd.hpp>

namespace vantakit {

// {"text"} → {"hash"}
nlohmann::json GlobalsHashView(const nlohmann::json& input);
// {"xml", "os_major", "queries"} → {"codes", "results"}; a query is ["font", id, scale], ["color", name],
// ["theme", name], ["default"] or ["apply", [[name, value]…]]
nlohmann::json GlobalsLoadView(const nlohmann::json& input);
// {"list"} → {"pairs"}
nlohmann::json GlobalsAttributeListView(const nlohmann::json& input);

}  // namespace vantakit
