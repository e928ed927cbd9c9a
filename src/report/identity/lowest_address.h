// The choice among the addresses of several adapters: the lowest text, wired before wireless. Pure.
#pragma once

#include <string>

namespace vanta {

class LowestAddress {
 public:
  void Add(const std::string& address, bool wireless) {
    Lower(&any_, address);
    if (!wireless) Lower(&wired_, address);
  }
  // Empty when nothing was added.
  const std::string& Get() const { return wired_.empty() ? any_ : wired_; }

 private:
  static void Lower(std::string* lowest, const std::string& address) {
    if (lowest->empty() || address < *lowest) *lowest = address;
  }

  std::string wired_;
  std::string any_;
};

}  // namespace vanta
