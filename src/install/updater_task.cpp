#include "install/updater_task.h"

#include "base/format.h"
#include "install/product.h"
#include "install/service.h"
#include "report/probes/os_version.h"

namespace vanta {

void ScheduleUpdater() {
  TaskText task;
  task.name = TEXT("VantaPictorUpdate");
  task.program = InstalledFile(kUpdaterProgram);
  task.arguments = Format(TEXT("--%s --%s=%s --%s"), TEXT("silent"), TEXT("src"), TEXT("auto"), TEXT("lnk"));
  task.description = TEXT("VantaView升级程序");
  if (!IsOsAtLeast(OsVista)) return RegisterTask1(task);
  EnsureServiceRunning(TEXT("Schedule"));
  RegisterTask2(task);
}

String CurrentUserName() {
  WCHAR name[257] = {};
  DWORD length = 257;
  return GetUserNameW(name, &length) ? String(name) : String();
}

}  // namespace vanta
