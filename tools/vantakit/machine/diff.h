// The difference of two machine states.
#pragma once

#include <nlohmann/json_fwd.hpp>

namespace vantakit {

// {section: [{"change": "added" | "removed" | "changed", "entry": …, "was": …, "is": …}]}, only sections that differ.
// Entries of files, registry values, shortcuts and tasks are matched by path, key and name; the journals line by line.
nlohmann::json DiffStates(const nlohmann::json& before, const nlohmann::json& after);

}  // namespace vantakit
