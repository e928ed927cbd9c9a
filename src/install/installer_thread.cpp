#include "install/installer_thread.h"

#include "app/channel.h"
#include "app/install_state.h"
#include "app/option_store.h"
#include "base/com_values.h"
#include "base/deployment.h"
#include "base/lock.h"
#include "base/unique.h"
#include "install/app_paths.h"
#include "install/directories.h"
#include "install/extraction.h"
#include "install/launch.h"
#include "install/payload.h"
#include "install/product_config.h"
#include "install/setup_messages.h"
#include "install/shell_extension.h"
#include "install/shortcuts.h"
#include "install/uninstall_entry.h"
#include "install/viewer_processes.h"
#include "report/log/logger.h"
#include "report/stats/http_log.h"
#include "report/stats/report_url.h"

#include <process.h>

namespace vanta {
namespace {

// What a step says about the installation.
enum class Next { Continue, Stop };

Next ReopenPayload() { return openEmbeddedFilesArchive() ? Next::Continue : Next::Stop; }

Next EndRunningPrograms() {
  TerminateViewerProcesses();
  return Next::Continue;
}

Next FreeShellExtension() {
  ReleaseShellExtension();
  // Time for the ended programs and the unregistration to let go of their files.
  Sleep(1000);
  return Next::Continue;
}

Next ExtractFiles() {
  bool extracted = EnsureInstallDirectory();
  if (extracted) {
    PostSetupProgress(0);
    extracted = extractInstallerFiles(GetInstallDirectory());
  }
  if (extracted) return Next::Continue;
  Log(kSetupLogTag, TEXT("InstallerThread extractInstallerFiles false"));
  return Next::Stop;
}

Next MakeShortcuts() {
  CreateShortcuts();
  return Next::Continue;
}

Next RegisterUninstaller() {
  if (!WriteUninstallEntry(HKEY_LOCAL_MACHINE)) PostSetupStatus(SetupStatus::ErrorUninstallEntry);
  return Next::Continue;
}

Next RegisterProgramAndUpdater() {
  if (!WriteAppPathsAndScheduleUpdater(HKEY_LOCAL_MACHINE)) PostSetupStatus(SetupStatus::ErrorAppPaths);
  PostSetupProgress(0);
  return Next::Continue;
}

Next KeepChannel() {
  const String channel = GetInstallerChannel();
  if (channel.empty()) return Next::Continue;
  if (ReadChannel().empty()) WriteChannel(channel);
  WriteNewChannel(channel);
  return Next::Continue;
}

Next TellVersion() {
  CVantaHttpLog::Instance().SetVersion(ReadInstalledVersion());
  return Next::Continue;
}

Next StartProduct() {
  runApp();
  return Next::Continue;
}

String StatusWord() {
  if (HasOption(TEXT("src"), TEXT("upgrade"))) return TEXT("2");
  return GetInstallState().over_install ? TEXT("1") : TEXT("0");
}

Next Report() {
  CVantaHttpLog::Instance().PostStatus(StatusWord(), false);
  CVantaHttpLog::Instance().SendInstallReport(InstallReportEndpoint(GetDeployment().upgrade_host));
  return Next::Continue;
}

Next ExtendShell() {
  RegisterShellExtension();
  return Next::Continue;
}

Next Finish() {
  ClosePayload();
  if (!GetInstallState().over_install) WriteInstallTime();
  PostSetupStatus(SetupStatus::Finished);
  return Next::Continue;
}

// clang-format off
constexpr Next (*kSteps[])() = {
    // Any of these may stop the installation …
    ReopenPayload,
    EndRunningPrograms,
    FreeShellExtension,
    ExtractFiles,
    // … and these go on whatever fails.
    MakeShortcuts,
    RegisterUninstaller,
    RegisterProgramAndUpdater,
    KeepChannel,
    TellVersion,
    StartProduct,
    Report,
    ExtendShell,
    Finish,
};
// clang-format on

void Fail() {
  ClosePayload();
  PostSetupStatus(SetupStatus::Failed);
}

// Signalled while no installer thread runs.
struct IdleEvent {
  UniqueHandle handle{CreateEventW(nullptr, TRUE, TRUE, nullptr)};
};
constinit Lazy<IdleEvent> idle;

unsigned WINAPI ThreadEntry(void*) {
  RunInstaller();
  SetEvent(idle.Get().handle.Get());
  return 0;
}

}  // namespace

void RunInstaller() {
  Log(kSetupLogTag, TEXT("InstallerThread start"));
  const ComScope com(COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE);
  for (const auto step : kSteps) {
    if (step() == Next::Stop) return Fail();
  }
}

bool StartInstallerThread() {
  ResetEvent(idle.Get().handle.Get());
  const uintptr_t thread = _beginthreadex(nullptr, 0, ThreadEntry, nullptr, 0, nullptr);
  if (!thread) {
    SetEvent(idle.Get().handle.Get());
    return false;
  }
  CloseHandle(reinterpret_cast<HANDLE>(thread));
  return true;
}

bool WaitForInstallerThread(DWORD milliseconds) {
  const HANDLE event = idle.Get().handle.Get();
  return !event || WaitForSingleObject(event, milliseconds) == WAIT_OBJECT_0;
}

}  // namespace vanta
