// Identifier 1 on the machine that runs.
#pragma once

#include "report/identity/mid1_rules.h"

namespace vanta {

class Mid1Machine : public Mid1Surroundings {
 public:
  virtual ~Mid1Machine() = default;

  bool ReadStored(size_t room, std::string* text) override;
  // Processor, disk serial and network address, one behind the other, at most 4,095 bytes.
  std::string HardwareString() override;
  void Write(const char* name, const std::string& text) override;
};

}  // namespace vanta
