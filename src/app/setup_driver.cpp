#include "app/setup_driver.h"

#include "app/install_state.h"
#include "app/message_loop.h"
#include "app/option_store.h"
#include "install/directories.h"
#include "install/installer_thread.h"
#include "install/payload.h"
#include "install/setup_messages.h"
#include "install/version.h"
#include "report/http/network_library.h"
#include "report/log/logger.h"
#include "setupui/setup_window.h"

namespace vanta {
namespace {

constexpr DWORD kEndWait = 10000;  // ms

// Everything of an installation that comes before the installer thread's own steps.
bool PrepareInstallation() {
  InstallState& state = GetInstallState();
  state.progress = 0;
  state.target_window = IsSilent() ? nullptr : FindWindowW(kSetupWindowClass, nullptr);
  GetInstallDirectory();
  state.over_install = IsInstalled();
  if (state.target_window.load()) {
    PostSetupStatus(SetupStatus::Started);
    PostSetupProgress(0);
  }
  if (openEmbeddedFilesArchive()) return true;
  Log(kSetupLogTag, TEXT("runInstaller openEmbeddedFilesArchive false"));
  return false;
}

bool StartThread() {
  if (StartInstallerThread()) return true;
  // As a payload that cannot be unpacked: the window tells the user and closes.
  ClosePayload();
  PostSetupStatus(SetupStatus::ErrorUnzip);
  PostSetupStatus(SetupStatus::Failed);
  return false;
}

bool RunWindow() {
  Log(kSetupLogTag, TEXT("runSetup window"));
  if (const HWND existing = FindWindowW(kSetupWindowClass, nullptr)) {
    Log(kSetupLogTag, TEXT("runSetup window already exist"));
    ActivateWindow(existing);
    return false;
  }
  if (!CreateSetupWindow()) return false;
  MessageLoop loop;
  return loop.Run() == 0;
}

bool RunSilent() {
  Log(kSetupLogTag, TEXT("runSetup silent"));
  if (isLowerSetup()) {
    Log(kSetupLogTag, TEXT("runSetup isLowerSetup"));
    return false;
  }
  if (!PrepareInstallation()) return false;
  RunInstaller();
  return true;
}

}  // namespace

bool runSetup() {
  GetInstallDirectory();
  LoadNetworkLibrary();
  return IsSilent() ? RunSilent() : RunWindow();
}

bool runInstaller() {
  // The thread of an attempt that failed may still be closing the payload while the window offers another.
  if (!WaitForInstallerThread(kEndWait)) return false;
  if (!PrepareInstallation()) return false;
  if (!IsSilent()) return StartThread();
  RunInstaller();
  return true;
}

void ActivateWindow(HWND window) {
  if (IsIconic(window)) ShowWindow(window, SW_RESTORE);
  ShowWindow(window, SW_SHOW);
  // Only the thread that owns the foreground may hand it on.
  const DWORD self = GetCurrentThreadId();
  const DWORD foreground = GetWindowThreadProcessId(GetForegroundWindow(), nullptr);
  AttachThreadInput(self, foreground, TRUE);
  SetForegroundWindow(window);
  BringWindowToTop(window);
  SetActiveWindow(window);
  AttachThreadInput(self, foreground, FALSE);
}

void EndInstallation() {
  GetInstallState().stop_requested = true;
  WaitForInstallerThread(kEndWait);
}

}  // namespace vanta
