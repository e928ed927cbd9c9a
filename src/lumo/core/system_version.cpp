#include "lumo/core/system_version.h"

#include "base/late_function.h"

namespace lumo {
namespace {

// The kernel's own answer; GetVersionExW tells a program without a matching manifest entry an older number.
constinit vanta::LateFunction<LONG(WINAPI*)(OSVERSIONINFOW*)> rtl_get_version(TEXT("NtDll.dll"), "RtlGetVersion");

OSVERSIONINFOW AskVersion() {
  OSVERSIONINFOW info = {};
  info.dwOSVersionInfoSize = sizeof info;
  if (const auto call = rtl_get_version.Get(); call && call(&info) == 0) return info;
  if (!GetVersionExW(&info)) info = {};
  return info;
}

bool IsAtLeast(DWORD major, DWORD minor) {
  const OSVERSIONINFOW info = AskVersion();
  return info.dwMajorVersion != major ? info.dwMajorVersion > major : info.dwMinorVersion >= minor;
}

}  // namespace

bool IsVistaOrLater() { return IsAtLeast(6, 0); }
bool IsWindows8OrLater() { return IsAtLeast(6, 2); }
unsigned SystemMajorVersion() { return AskVersion().dwMajorVersion; }

}  // namespace lumo
