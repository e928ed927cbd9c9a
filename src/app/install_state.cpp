#include "app/install_state.h"

namespace vanta {
namespace {

constinit Lazy<InstallState> process_state;

}  // namespace

String InstallState::Directory() {
  const Guard guard(lock_);
  return directory_;
}

void InstallState::SetDirectory(StringView directory) {
  if (directory.size() >= MAX_PATH) return;
  const Guard guard(lock_);
  directory_ = directory;
}

InstallState& GetInstallState() { return process_state.Get(); }

}  // namespace vanta
