#include "base/lock.h"

namespace vanta {

bool Once::Begin() {
  if (state_.load(std::memory_order_acquire) == kDone) return false;
  LONG expected = kNew;
  if (state_.compare_exchange_strong(expected, kRunning)) return true;
  while (state_.load(std::memory_order_acquire) != kDone) SwitchToThread();
  return false;
}

void Once::End() { state_.store(kDone, std::memory_order_release); }

}  // namespace vanta
