#include "install/launch.h"

#include "app/option_store.h"
#include "base/format.h"
#include "install/product.h"
#include "report/log/logger.h"
#include "report/makerlibs/file_signature.h"

#include <shellapi.h>

namespace vanta {
namespace {

void LogLaunch(const String& file, const String& parameters) {
  Log(kSetupLogTag, TEXT("runApp [%s] [%s]"), file, parameters);
}

void StartForUser(const String& parameters) {
  const String program = ChosenProgram();
  if (IsSilent() || !IsSignedMakerFile(program)) return;
  LaunchAsDesktopUser(nullptr, program, parameters.c_str(), nullptr, SW_SHOWNORMAL);
  LogLaunch(program, parameters);
}

// Needs the setup's own rights: associations are made for the machine.
void AskToBecomeDefault(const String& parameters) {
  const String viewer = InstalledFile(kViewerProgram);
  if (!IsAssoc() || !IsSignedMakerFile(viewer)) return;
  ShellExecuteW(nullptr, nullptr, viewer.c_str(), parameters.c_str(), nullptr, SW_HIDE);
  LogLaunch(viewer, parameters);
}

}  // namespace

void runApp() {
  const String parameters = Format(TEXT("/%s=%s"), TEXT("src"), TEXT("setup"));
  StartForUser(parameters);
  AskToBecomeDefault(parameters + TEXT(" /regext"));
}

}  // namespace vanta
