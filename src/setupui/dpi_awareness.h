// Tells Windows that the process scales its windows itself.
#pragma once

namespace vanta {

// System DPI awareness, with whichever call this Windows has. True where the process then counts as DPI-aware; before
// Vista it always does.
bool DeclareDpiAware();

}  // namespace vanta
