// Windows services that the setup relies on.
#pragma once

#include "base/text.h"

namespace vanta {

// Starts a stopped service after setting it to start automatically; every other state counts as running. True when it
// runs or was started. The service's security settings are left alone.
bool EnsureServiceRunning(const String& name);

}  // namespace vanta
