// A machine's state, or the difference of two, for people: sections with aligned columns, in colour on a terminal.
#pragma once

#include <string>

#include <nlohmann/json_fwd.hpp>

namespace vantakit {

enum class Colour { Auto, Always, Never };

void PrintState(const nlohmann::json& state, Colour colour);
// `difference` is what DiffStates gives.
void PrintDifference(const nlohmann::json& difference, Colour colour);

}  // namespace vantakit
