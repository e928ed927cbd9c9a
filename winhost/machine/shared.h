// Memory that all processes of a machine map: <machine>/.shared. Zero-filled when new; every user takes a fixed block.
#pragma once

#include <pthread.h>

#include <atomic>
#include <cstdint>

#include "winhost/machine/machine.h"

namespace winhost {

struct SharedBlock {
  std::atomic<std::uint64_t> clock_origin_real_ns;  // CLOCK_REALTIME when the machine's clock was set going; 0: not yet
  std::atomic<std::uint64_t> clock_advance_100ns;   // what sleeping has added to a standing clock
};

class SharedMemory {
 public:
  explicit SharedMemory(Machine& machine);
  ~SharedMemory();
  SharedBlock& block() { return *block_; }

 private:
  SharedBlock* block_;
};

}  // namespace winhost
