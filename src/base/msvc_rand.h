// The sequence of the Microsoft run-time's rand(), which other run-times do not share.
#pragma once

#include <windows.h>

namespace vanta {

class MsvcRand {
 public:
  explicit constexpr MsvcRand(DWORD seed) : state_(seed) {}
  // 0 to 32,767.
  constexpr int Next() {
    state_ = state_ * 214013u + 2531011u;
    return static_cast<int>((state_ >> 16) & 0x7fff);
  }

 private:
  DWORD state_;
};

}  // namespace vanta
