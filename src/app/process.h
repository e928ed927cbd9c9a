// The life of the process from its entry to its exit code.
#pragma once

namespace vanta {

// Start-up, the run mode, shutdown. 0 when the run mode reports success, else -1. Once a process.
int RunProcess();

}  // namespace vanta
