// Whether a Linux process still runs, and is the one that it was.
#pragma once

#include <sys/types.h>

#include <cstdint>

namespace winhost {

// Linux clock ticks from boot to the process's start, which tells it from a later one with its number; 0 when it does
// not run (a process that has ended and waits for its parent counts as gone).
std::uint64_t ProcessStartTicks(pid_t process);

}  // namespace winhost
