#include <unistd.h>
#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <string>

#include "winhost/kernel/system_exports.h"
#include "winhost/machine/faults.h"
#include "winhost/machine/machine.h"
#include "winhost/machine/text.h"
#include "winhost/shell/folder_layout.h"

namespace {

using winhost::Facts;
using winhost::Machine;

constexpr LONG kStatusSuccess = 0;
constexpr LONG kStatusUnsuccessful = static_cast<LONG>(0xC0000001U);
constexpr LONG kStatusInvalidParameter = static_cast<LONG>(0xC000000DU);

const Facts& TheFacts() { return Machine::Current().facts(); }

void FillVersion(OSVERSIONINFOW* into) {
  const winhost::VersionFacts& version = TheFacts().version;
  into->dwMajorVersion = version.major;
  into->dwMinorVersion = version.minor;
  into->dwBuildNumber = version.build;
  into->dwPlatformId = version.platform;
  std::fill(std::begin(into->szCSDVersion), std::end(into->szCSDVersion), u'\0');
  if (into->dwOSVersionInfoSize < sizeof(OSVERSIONINFOEXW)) return;
  auto* extended = reinterpret_cast<OSVERSIONINFOEXW*>(into);
  extended->wServicePackMajor = 0;
  extended->wServicePackMinor = 0;
  extended->wSuiteMask = 0;
  extended->wProductType = version.product_type;
  extended->wReserved = 0;
}

WORD NativeArchitecture() {
  const std::string& name = TheFacts().architecture;
  if (name == "ia64") return PROCESSOR_ARCHITECTURE_IA64;
  if (name == "arm64") return PROCESSOR_ARCHITECTURE_ARM64;
  if (name == "amd64") return PROCESSOR_ARCHITECTURE_AMD64;
  if (name == "x86") return PROCESSOR_ARCHITECTURE_INTEL;
  return TheFacts().windows_bits == 64 ? PROCESSOR_ARCHITECTURE_AMD64 : PROCESSOR_ARCHITECTURE_INTEL;
}

void FillSystemInfo(SYSTEM_INFO* info, WORD architecture) {
  const long processors = std::clamp(sysconf(_SC_NPROCESSORS_ONLN), 1L, 32L);
  const bool wide = architecture != PROCESSOR_ARCHITECTURE_INTEL;
  *info = SYSTEM_INFO{};
  info->wProcessorArchitecture = architecture;
  info->dwPageSize = 0x1000;
  info->lpMinimumApplicationAddress = reinterpret_cast<LPVOID>(std::uintptr_t{0x10000});
  info->lpMaximumApplicationAddress =
      reinterpret_cast<LPVOID>(wide ? std::uintptr_t{0x7FFFFFFEFFFF} : std::uintptr_t{0x7FFEFFFF});
  info->dwActiveProcessorMask = (DWORD_PTR{1} << processors) - 1;
  info->dwNumberOfProcessors = static_cast<DWORD>(processors);
  info->dwProcessorType = architecture == PROCESSOR_ARCHITECTURE_AMD64 ? 8664 : 586;
  info->dwAllocationGranularity = 0x10000;
  info->wProcessorLevel = 6;
}

UINT PutFolder(const char* function, const std::u16string& folder, LPWSTR buffer, UINT chars) {
  if (const auto error = winhost::PlannedFault(function)) {
    SetLastError(*error);
    return 0;
  }
  winhost::EnsureStandardFolders();
  const UINT length = static_cast<UINT>(folder.size());
  if (!buffer || chars < length + 1) return length + 1;
  std::copy_n(folder.c_str(), length + 1, buffer);
  return length;
}

// `*chars` in: room, out: with the terminator where `counts_terminator` or the room is too small.
BOOL PutName(const char* function, const std::string& name, LPWSTR buffer, LPDWORD chars, DWORD too_small,
             bool counts_terminator) {
  if (const auto error = winhost::PlannedFault(function)) {
    SetLastError(*error);
    return FALSE;
  }
  if (!chars) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  const std::u16string wide = winhost::Wide(name);
  const DWORD needed = static_cast<DWORD>(wide.size()) + 1;
  const bool fits = buffer && *chars >= needed;
  *chars = fits && !counts_terminator ? needed - 1 : needed;
  if (fits) {
    std::copy_n(wide.c_str(), needed, buffer);
  } else {
    SetLastError(too_small);
  }
  return fits;
}

LONG WINAPI RtlGetVersion(PRTL_OSVERSIONINFOW version) {
  if (!version) return kStatusInvalidParameter;
  if (TheFacts().version.rtl_get_version_fails) return kStatusUnsuccessful;
  FillVersion(version);
  return kStatusSuccess;
}

bool HasRtlGetVersion(const Facts& facts) {
  return facts.version.platform == VER_PLATFORM_WIN32_NT && facts.AtLeast(5, 0) && facts.version.rtl_get_version;
}

bool SinceXp(const Facts& facts) { return facts.AtLeast(5, 1); }
bool SinceVista(const Facts& facts) { return facts.AtLeast(6, 0); }

template <class Function>
FARPROC Export(Function* function) {
  return reinterpret_cast<FARPROC>(reinterpret_cast<void (*)()>(function));
}

}  // namespace

BOOL GetVersionExW(LPOSVERSIONINFOW version) {
  if (const auto error = winhost::PlannedFault("GetVersionExW")) {
    SetLastError(*error);
    return FALSE;
  }
  const DWORD size = version ? version->dwOSVersionInfoSize : 0;
  if (size != sizeof(OSVERSIONINFOW) && size != sizeof(OSVERSIONINFOEXW)) {
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return FALSE;
  }
  FillVersion(version);
  return TRUE;
}

// A 32-bit process on an AMD64 Windows is told of the processor that it sees.
void GetSystemInfo(LPSYSTEM_INFO info) {
  FillSystemInfo(info, TheFacts().process_bits == 32 ? WORD{PROCESSOR_ARCHITECTURE_INTEL} : NativeArchitecture());
}

void GetNativeSystemInfo(LPSYSTEM_INFO info) { FillSystemInfo(info, NativeArchitecture()); }

UINT GetWindowsDirectoryW(LPWSTR buffer, UINT chars) {
  return PutFolder("GetWindowsDirectoryW", winhost::WindowsFolder(TheFacts()), buffer, chars);
}

UINT GetSystemDirectoryW(LPWSTR buffer, UINT chars) {
  return PutFolder("GetSystemDirectoryW", winhost::SystemFolder(TheFacts()), buffer, chars);
}

BOOL GetUserNameW(LPWSTR buffer, LPDWORD chars) {
  return PutName("GetUserNameW", TheFacts().user, buffer, chars, ERROR_INSUFFICIENT_BUFFER, true);
}

BOOL GetComputerNameW(LPWSTR buffer, LPDWORD chars) {
  return PutName("GetComputerNameW", TheFacts().computer, buffer, chars, ERROR_BUFFER_OVERFLOW, false);
}

namespace winhost {

std::span<const BuiltInExport> SystemExports() {
  static const BuiltInExport kExports[] = {
      {"ntdll.dll", "RtlGetVersion", Export(&RtlGetVersion), HasRtlGetVersion},
      {"kernel32.dll", "GetNativeSystemInfo", Export(&GetNativeSystemInfo), SinceXp},
      {"kernel32.dll", "GetSystemInfo", Export(&GetSystemInfo), nullptr},
      {"kernel32.dll", "GetVersionExW", Export(&GetVersionExW), nullptr},
      {"advapi32.dll", "RegDeleteKeyExW", Export(&RegDeleteKeyExW), SinceVista},
  };
  return kExports;
}

}  // namespace winhost
