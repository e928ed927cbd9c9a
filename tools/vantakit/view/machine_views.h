// Views of the environment probes.
#pragma once

#include <nlohmann/json_fwd.hpp>

namespace vantakit {

// {"platform", "major", "minor", "build"} → {"name", "code", "sysver", "atLeastVista", "atLeast7", "isXP"}
nlohmann::json ProbesOsView(const nlohmann::json& input);

// {"machine": folder} → every answer of the probes on that machine. They are answered by a process of their own that
// lives there, because the product keeps some of them for a process's life.
nlohmann::json MachineProbesView(const nlohmann::json& input);

}  // namespace vantakit
