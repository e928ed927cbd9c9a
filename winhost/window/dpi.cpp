#include "winhost/window/dpi.h"

#include <shellscalingapi.h>
#include <windows.h>

#include <atomic>

#include "winhost/machine/faults.h"
#include "winhost/machine/machine.h"

namespace winhost {
namespace {

constexpr int kUsualDpi = 96;

struct DpiState {
  explicit DpiState(Machine& machine) : screen(machine.facts().dpi) {}
  std::atomic<int> screen;
  std::atomic<bool> aware = false;
};

DpiState& TheState() { return Machine::Current().Get<DpiState>(); }

}  // namespace

int ScreenDpi() { return TheState().screen; }
void SetScreenDpi(int dpi) { TheState().screen = dpi; }
int SystemDpi() { return TheState().aware ? ScreenDpi() : kUsualDpi; }
bool BecomeDpiAware() { return !TheState().aware.exchange(true); }

}  // namespace winhost

using namespace winhost;

BOOL SetProcessDPIAware() {
  if (const auto error = PlannedFault("SetProcessDPIAware")) {
    SetLastError(*error);
    return FALSE;
  }
  BecomeDpiAware();
  return TRUE;
}

HRESULT SetProcessDpiAwareness(PROCESS_DPI_AWARENESS awareness) {
  if (const auto error = PlannedFault("SetProcessDpiAwareness")) return static_cast<HRESULT>(*error);
  if (awareness < PROCESS_DPI_UNAWARE || awareness > PROCESS_PER_MONITOR_DPI_AWARE) return E_INVALIDARG;
  if (awareness == PROCESS_DPI_UNAWARE) return S_OK;
  return BecomeDpiAware() ? S_OK : E_ACCESSDENIED;
}

HRESULT GetDpiForMonitor(HMONITOR monitor, MONITOR_DPI_TYPE, UINT* x, UINT* y) {
  if (const auto error = PlannedFault("GetDpiForMonitor")) return static_cast<HRESULT>(*error);
  MONITORINFO info{};
  info.cbSize = sizeof info;
  if (!x || !y || !GetMonitorInfoW(monitor, &info)) return E_INVALIDARG;
  *x = *y = static_cast<UINT>(SystemDpi());
  return S_OK;
}
