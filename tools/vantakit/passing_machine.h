// A machine of a command's own, in zone UTC, that is gone afterwards.
#pragma once

#include <filesystem>
#include <nlohmann/json_fwd.hpp>
#include <optional>

#include "winhost/machine/machine.h"

namespace vantakit {

class PassingMachine {
 public:
  PassingMachine();
  explicit PassingMachine(const nlohmann::json& facts);  // as in machine.json
  ~PassingMachine();
  PassingMachine(const PassingMachine&) = delete;
  PassingMachine& operator=(const PassingMachine&) = delete;

 private:
  std::filesystem::path folder_;
  std::optional<winhost::MachineScope> scope_;
};

}  // namespace vantakit
