#include "tools/vantakit/skin_source.h"

#include <spawn.h>
#include <stdlib.h>
#include <sys/wait.h>

#include "tools/vantakit/commands.h"

extern char** environ;

namespace vantakit {
namespace {

constexpr const char* kScript = "make_skin.sh";

void Run(const std::filesystem::path& script, const std::filesystem::path& out) {
  std::string program = std::filesystem::absolute(script).string(), argument = out.string();
  char* const arguments[] = {program.data(), argument.data(), nullptr};
  pid_t child = 0;
  int status = 0;
  if (posix_spawn(&child, program.c_str(), nullptr, nullptr, arguments, environ) != 0 ||
      waitpid(child, &status, 0) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
    throw Failure(program + " failed");
  }
}

}  // namespace

SkinSource::SkinSource(const std::filesystem::path& folder) : folder_(folder) {
  if (!std::filesystem::exists(folder / kScript)) return;
  std::string pattern = (std::filesystem::temp_directory_path() / "vanta-skin-XXXXXX").string();
  if (!mkdtemp(pattern.data())) throw Failure("no folder for the skin can be made below the temporary folder");
  passing_ = pattern;
  folder_ = passing_ / "skin";
  try {
    Run(folder / kScript, folder_);
  } catch (...) {
    std::error_code ignored;
    std::filesystem::remove_all(passing_, ignored);
    throw;
  }
}

SkinSource::~SkinSource() {
  std::error_code ignored;
  if (!passing_.empty()) std::filesystem::remove_all(passing_, ignored);
}

}  // namespace vantakit
