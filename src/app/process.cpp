#include "app/process.h"

#include "app/channel.h"
#include "app/command_line.h"
#include "app/library_search.h"
#include "app/setup_driver.h"
#include "app/window_registry.h"
#include "install/product_config.h"
#include "report/log/logger.h"
#include "report/makerlibs/crash_reporter.h"
#include "report/makerlibs/safe_loader.h"
#include "report/stats/http_log.h"
#include "setupui/skin_package.h"

#include <commctrl.h>
#include <imm.h>
#include <ole2.h>

namespace vanta {
namespace {

void InitialiseControls() {
  INITCOMMONCONTROLSEX classes = {};
  classes.dwSize = sizeof classes;
  classes.dwICC = ICC_BAR_CLASSES;
  InitCommonControlsEx(&classes);
}

void ConfigureStatistics() {
  CVantaHttpLog& statistics = CVantaHttpLog::Instance();
  const String channel = GetChannel();
  const String first_channel = ReadChannel();
  statistics.SetUseWinInet(true);
  statistics.SetChannel(channel);
  statistics.SetSecondChannel(first_channel.empty() ? channel : first_channel);
  statistics.SetVersion(ReadInstalledVersion());
}

void LoadSkin() {
  // Held until the process ends: DPI functions are looked up in it.
  LoadSystemLibrary(TEXT("Shcore.dll"));
  LoadSkinResource(kSkinResource, kSkinResourceType, "");
  InitSkin(TEXT("resources\\"), TEXT("themes\\default"), TEXT("lang\\zh-CN"), true);
}

bool RunApplication() {
  ParseCommandLine(GetCommandLineW(), kOptionTable, GetOptionStore());
  Log(kSetupLogTag, TEXT("start"));
  ConfigureStatistics();
  LoadSkin();
  const bool ole = SUCCEEDED(OleInitialize(nullptr));
  const bool succeeded = runSetup();
  EndInstallation();
  ShutdownSkin();
  if (ole) OleUninitialize();
  CVantaHttpLog::Instance().WaitBeforeExit();
  return succeeded;
}

}  // namespace

int RunProcess() {
  RestrictLibrarySearch();
  ImmDisableIME(static_cast<DWORD>(-1));
  const bool com = SUCCEEDED(CoInitialize(nullptr));
  InitialiseControls();
  StartCrashReporter();
  const bool succeeded = RunApplication();
  TellCrashReporterExiting();
  DestroyRegisteredWindows();
  if (com) CoUninitialize();
  return succeeded ? 0 : -1;
}

}  // namespace vanta
