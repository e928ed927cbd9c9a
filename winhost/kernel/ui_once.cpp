// What a program switches on or off once at its start, and of which the machine has nothing to show.
#include <commctrl.h>
#include <imm.h>
#include <windows.h>

#include "winhost/machine/faults.h"

namespace {

constexpr DWORD kKnownClasses = 0xFFFF;

bool Planned(const char* function) {
  const auto error = winhost::PlannedFault(function);
  if (error) SetLastError(*error);
  return error.has_value();
}

}  // namespace

BOOL ImmDisableIME(DWORD) { return !Planned("ImmDisableIME"); }

void InitCommonControls() {}

BOOL InitCommonControlsEx(const INITCOMMONCONTROLSEX* classes) {
  if (Planned("InitCommonControlsEx")) return FALSE;
  return classes && classes->dwSize == sizeof *classes && (classes->dwICC & ~kKnownClasses) == 0;
}
