// What a machine folder holds, as one JSON object: the answer of `vantakit machine show --json`. docs/machine-show.md
// lists its fields.
#pragma once

#include <filesystem>

#include <nlohmann/json_fwd.hpp>

namespace vantakit {

// Waits until the programs that run on the machine have ended, at most `real_ms`; true when none is left. A program
// that a test holds open does not end, so callers go on either way.
bool WaitForPrograms(int real_ms);

// Everything on the machine that this process lives on. Lists are in a fixed order, so that equal machines give equal
// text.
nlohmann::json MachineState();

}  // namespace vantakit
