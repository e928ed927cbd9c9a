// The process that a walk walks: this program once more, running the setup's own entry with a walker's thread beside
// it.
#pragma once

namespace vantakit {

// Names the descriptor of the walked process's end of the channel; "-1": the setup runs with nobody beside it.
inline constexpr const char* kWalkVariable = "VANTA_WALK";

bool IsWalked();
// The setup's exit code.
int RunWalked();

}  // namespace vantakit
