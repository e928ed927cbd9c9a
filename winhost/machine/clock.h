// A machine's clock. Facts say where it stands at the machine's making and how fast it runs; its advance (by sleeping
// on a standing clock) is shared by all processes of the machine.
#pragma once

#include <cstdint>

namespace winhost {

class Machine;

// 100 ns units since 1601, UTC.
std::uint64_t MachineTime100ns();
// Milliseconds since the machine's start, wrapping nowhere (GetTickCount cuts it to 32 bits).
std::uint64_t MachineTicksMs();
// Of a certain machine, for threads that may outlive its being the current one.
std::uint64_t MachineTicksMs(Machine& machine);
// Time passes by sleeping and waiting alone.
bool MachineClockStands();
// Lets `ms` of machine time pass: really sleeps ms/speed; a clock that stands is moved on instead, at once.
void MachineSleepMs(std::uint64_t ms);
// How long, in real nanoseconds, a wait with this machine time-out may block. On a standing clock a wait that would
// block is given a short real grace for other threads and, when it then times out, PassWaitedMs moves the clock.
std::uint64_t RealWaitNs(std::uint32_t ms);
std::uint64_t RealWaitNs(Machine& machine, std::uint32_t ms);
void PassWaitedMs(std::uint32_t ms);
// The machine's time jumps ahead, whether its clock stands or runs; for tests and tools. Waits that have begun see it
// when they are next woken.
void AdvanceMachineClock(std::uint64_t ms);

}  // namespace winhost
