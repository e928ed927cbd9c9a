// Where a walk takes place: a machine, with a setup on it.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "tools/vantakit/passing_machine.h"

namespace vantakit {

class WalkMachine {
 public:
  // Without a folder: a plain machine that is gone afterwards. A folder that is missing or empty becomes a machine.
  // A setup that does not lie on the machine is copied into its downloads folder. Throws Failure.
  WalkMachine(const std::optional<std::string>& folder, const std::filesystem::path& setup);
  ~WalkMachine();
  WalkMachine(const WalkMachine&) = delete;
  WalkMachine& operator=(const WalkMachine&) = delete;

  // The setup's Windows path, UTF-8.
  const std::string& Image() const { return image_; }

 private:
  std::optional<PassingMachine> passing_;
  std::optional<winhost::MachineScope> scope_;
  std::string image_;
};

}  // namespace vantakit
