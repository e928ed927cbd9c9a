#include "install/setup_messages.h"

#include "app/install_state.h"

namespace vanta {

void PostSetupStatus(SetupStatus status) {
  if (const HWND window = GetInstallState().target_window) {
    PostMessageW(window, WM_SETUP_STATUS, 0, static_cast<LPARAM>(status));
  }
}

void PostSetupProgress(LONG percent) {
  InstallState& state = GetInstallState();
  if (percent <= state.progress && state.progress_posted) return;
  state.progress = percent;
  const HWND window = state.target_window;
  if (!window) return;
  state.progress_posted = true;
  PostMessageW(window, WM_SETUP_PROGRESS, 0, percent);
}

}  // namespace vanta
