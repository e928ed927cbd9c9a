#include "tools/vantakit/passing_machine.h"

#include <stdlib.h>

#include <fstream>
#include <nlohmann/json.hpp>

#include "tools/vantakit/commands.h"

namespace vantakit {

PassingMachine::PassingMachine() : PassingMachine(nlohmann::json::object()) {}

PassingMachine::PassingMachine(const nlohmann::json& facts) {
  std::string pattern = (std::filesystem::temp_directory_path() / "vanta-machine-XXXXXX").string();
  if (!mkdtemp(pattern.data())) throw Failure("no machine can be made below the temporary folder");
  folder_ = pattern;
  if (!facts.empty()) std::ofstream(folder_ / "machine.json") << facts;
  setenv("VANTA_MACHINE", folder_.c_str(), 1);
  scope_.emplace(folder_);
}

PassingMachine::~PassingMachine() {
  scope_.reset();
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

}  // namespace vantakit
