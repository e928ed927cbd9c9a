// A skin folder as it is packed: itself, or what its own script makes of it.
#pragma once

#include <filesystem>

namespace vantakit {

// A folder with a script "make_skin.sh" holds sources: the script is run with an output folder as its argument, which
// is gone again with this object. Any other folder is taken as it stands.
class SkinSource {
 public:
  explicit SkinSource(const std::filesystem::path& folder);  // throws Failure when the script fails
  ~SkinSource();
  SkinSource(const SkinSource&) = delete;
  SkinSource& operator=(const SkinSource&) = delete;

  const std::filesystem::path& Folder() const { return folder_; }

 private:
  std::filesystem::path folder_;
  std::filesystem::path passing_;  // empty when nothing was made
};

}  // namespace vantakit
