#include "setupui/dpi_awareness.h"

#include "report/makerlibs/late_function.h"
#include "report/probes/os_version.h"

namespace vanta {
namespace {

constexpr int kSystemDpiAware = 1;  // PROCESS_SYSTEM_DPI_AWARE

constinit LateFunction<HRESULT(WINAPI*)(int)> set_awareness(TEXT("Shcore.dll"), "SetProcessDpiAwareness");
constinit LateFunction<BOOL(WINAPI*)()> set_aware(TEXT("user32.dll"), "SetProcessDPIAware");

}  // namespace

bool DeclareDpiAware() {
  if (!IsOsAtLeast(OsVista)) return true;
  if (const auto call = set_awareness.Get(); call && SUCCEEDED(call(kSystemDpiAware))) return true;
  const auto call = set_aware.Get();
  return call && call();
}

}  // namespace vanta
