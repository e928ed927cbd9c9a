#include "tests/support/machine_fixture.h"

#include <stdlib.h>

#include <algorithm>
#include <fstream>

namespace testing_support {

OnMachine::OnMachine() {
  std::string pattern = (std::filesystem::temp_directory_path() / "vanta-test-XXXXXX").string();
  folder_ = mkdtemp(pattern.data());
  setenv("VANTA_MACHINE", folder_.c_str(), 1);
}

OnMachine::~OnMachine() {
  scope_.reset();
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

winhost::Machine& OnMachine::Start(std::string_view facts) {
  std::ofstream(folder_ / "machine.json", std::ios::binary) << facts;
  scope_.emplace(folder_);
  return scope_->machine();
}

std::filesystem::path OnMachine::Disk(std::string_view windows_path) {
  std::string relative(windows_path);
  std::replace(relative.begin(), relative.end(), '\\', '/');
  relative.erase(1, 1);
  return folder_ / relative;
}

void OnMachine::Put(std::string_view windows_path, std::string_view bytes) {
  const auto path = Disk(windows_path);
  std::filesystem::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << bytes;
}

std::string OnMachine::Contents(std::string_view windows_path) {
  std::ifstream file(Disk(windows_path), std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

bool OnMachine::Exists(std::string_view windows_path) { return std::filesystem::exists(Disk(windows_path)); }

}  // namespace testing_support
