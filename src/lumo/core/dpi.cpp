#include "lumo/core/dpi.h"

#include "base/late_function.h"
#include "lumo/core/screen_dc.h"
#include "lumo/core/system_version.h"
#include "lumo/core/window.h"

#include <shellscalingapi.h>

namespace lumo {
namespace {

constexpr int kUsualDpi = 96;

constinit vanta::LateFunction<HRESULT(WINAPI*)(PROCESS_DPI_AWARENESS)> set_awareness(TEXT("Shcore.dll"),
                                                                                     "SetProcessDpiAwareness");
constinit vanta::LateFunction<BOOL(WINAPI*)()> set_aware(TEXT("user32.dll"), "SetProcessDPIAware");
constinit vanta::LateFunction<HRESULT(WINAPI*)(HMONITOR, MONITOR_DPI_TYPE, UINT*, UINT*)> get_dpi_for_monitor(
    TEXT("Shcore.dll"), "GetDpiForMonitor");

int global_scale = 0;

bool AskForAwareness() {
  if (!IsVistaOrLater()) return true;
  if (const auto call = set_awareness.Get(); call && SUCCEEDED(call(PROCESS_SYSTEM_DPI_AWARE))) return true;
  const auto call = set_aware.Get();
  return call && call();
}

int MonitorDpi() {
  const auto call = get_dpi_for_monitor.Get();
  UINT x = 0, y = 0;
  if (!call || FAILED(call(MonitorFromPoint({1, 1}, MONITOR_DEFAULTTONEAREST), MDT_EFFECTIVE_DPI, &x, &y)))
    return kUsualDpi;
  return static_cast<int>(x);
}

int ScreenDpi() {
  const ScreenDc screen;
  const int dpi = screen.Get() ? GetDeviceCaps(screen.Get(), LOGPIXELSX) : 0;
  return dpi > 0 ? dpi : kUsualDpi;
}

}  // namespace

int GlobalScalePercent() { return global_scale; }
void SetGlobalScalePercent(int percent) { global_scale = percent; }

int ReadSystemDpi() { return IsWindows8OrLater() ? MonitorDpi() : ScreenDpi(); }

bool DeclareDpiAware() {
  const bool aware = AskForAwareness();
  SetGlobalScalePercent(aware ? ScaleOfDpi(ReadSystemDpi()) : 100);
  return aware;
}

}  // namespace lumo
