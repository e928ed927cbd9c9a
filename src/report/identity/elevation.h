// Whether this process runs elevated.
#pragma once

namespace vanta {

// True where the system knows no elevation (before Vista). False when the question cannot be asked.
bool IsProcessElevated();

}  // namespace vanta
