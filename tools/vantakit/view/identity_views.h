// Views of the machine identifiers (docs/identity-views.md).
#pragma once

#include <nlohmann/json_fwd.hpp>

namespace vantakit {

nlohmann::json IdentityHashView(const nlohmann::json& input);
nlohmann::json IdentityCrc8View(const nlohmann::json& input);
nlohmann::json IdentityMidView(const nlohmann::json& input);
nlohmann::json IdentityM2View(const nlohmann::json& input);
nlohmann::json MachineIdentityView(const nlohmann::json& input);

}  // namespace vantakit
