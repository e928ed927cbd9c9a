#include "tools/vantakit/walk/walk_machine.h"

#include <stdlib.h>

#include <nlohmann/json.hpp>

#include "tools/vantakit/commands.h"
#include "winhost/kernel/paths.h"
#include "winhost/machine/text.h"
#include "winhost/shell/folder_layout.h"

namespace vantakit {
namespace {

namespace fs = std::filesystem;

std::u16string PutOntoMachine(const fs::path& setup) {
  std::error_code error;
  const fs::path file = fs::canonical(setup, error);
  if (error || !fs::is_regular_file(file)) throw Failure(setup.string() + ": no setup to walk");
  const std::u16string there = winhost::WindowsPath(file);
  if (!there.starts_with(u"Z:")) return there;
  winhost::EnsureStandardFolders();
  const std::u16string downloads = winhost::ProfileFolder(winhost::Machine::Current().facts()) + u"\\Downloads";
  const std::u16string path = downloads + u"\\" + file.filename().u16string();
  if (const auto folder = winhost::LinuxPath(downloads)) fs::create_directories(*folder, error);
  const auto target = winhost::LinuxPath(path);
  if (!target || !fs::copy_file(file, *target, fs::copy_options::overwrite_existing, error)) {
    throw Failure(winhost::Narrow(path) + ": the setup cannot be copied there");
  }
  return path;
}

}  // namespace

WalkMachine::WalkMachine(const std::optional<std::string>& folder, const fs::path& setup) {
  if (folder) {
    const fs::path absolute = fs::absolute(*folder);
    setenv("VANTA_MACHINE", absolute.c_str(), 1);
    scope_.emplace(absolute);
  } else {
    // What the setup starts has ended before the machine goes.
    passing_.emplace(nlohmann::json{{"launches_wait", true}});
  }
  image_ = winhost::Narrow(PutOntoMachine(setup));
}

WalkMachine::~WalkMachine() = default;

}  // namespace vantakit
