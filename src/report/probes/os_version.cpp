#include "report/probes/os_version.h"

#include "base/lock.h"

namespace vanta {
namespace {

constexpr DWORD kAny = 0xFFFFFFFF;

struct VersionRow {
  DWORD platform, major, minor, build;
  const WCHAR* name;
  DWORD code;
};

// First match wins. NT up to 4.x comes after the named versions because it is the only row of a range.
constexpr VersionRow kVersions[] = {
    {0, kAny, kAny, kAny, TEXT("Windows 3.2"), OsWindows32},
    {1, 4, 0, kAny, TEXT("Windows 9x"), Os9x},
    {1, 4, 10, kAny, TEXT("Windows 9x"), Os9x},
    {1, 4, 90, kAny, TEXT("Windows ME"), OsMe},
    {2, 5, 0, kAny, TEXT("Windows 2000"), Os2000},
    {2, 5, 1, kAny, TEXT("Windows XP"), OsXp},
    {2, 5, 2, kAny, TEXT("Windows 2003"), Os2003},
    {2, 6, 0, kAny, TEXT("Windows Vista"), OsVista},
    {2, 6, 1, kAny, TEXT("Windows 7"), Os7},
    {2, 6, 2, kAny, TEXT("Windows 8"), Os8},
    {2, 6, 3, kAny, TEXT("Windows 8.1"), Os81},
    {2, 6, 4, 9841, TEXT("Windows 10"), Os10},
    {2, 6, 4, 9860, TEXT("Windows 10"), Os10},
    {2, 6, 4, 9879, TEXT("Windows 10"), Os10},
    {2, 10, 0, kAny, TEXT("Windows 10"), Os10},
};
constexpr DWORD kLastNtMajor = 4;

bool Matches(DWORD wanted, DWORD value) { return wanted == kAny || wanted == value; }

using RtlGetVersionCall = LONG(WINAPI*)(OSVERSIONINFOW*);  // fills the long form too, by its stated size

// The version as the kernel tells it; all zeros where this Windows has no such call, or none that works.
OSVERSIONINFOEXW QueryVersion() {
  OSVERSIONINFOEXW info = {};
  info.dwOSVersionInfoSize = sizeof(info);
  const HMODULE ntdll = GetModuleHandleW(TEXT("NtDll.dll"));
  const auto rtl_get_version =
      ntdll ? reinterpret_cast<RtlGetVersionCall>(reinterpret_cast<void*>(GetProcAddress(ntdll, "RtlGetVersion")))
            : nullptr;
  if (!rtl_get_version) return {};
  auto* any_form = reinterpret_cast<OSVERSIONINFOW*>(&info);
  if (rtl_get_version(any_form) == 0) return info;
  info = {};
  info.dwOSVersionInfoSize = sizeof(info);
  if (!GetVersionExW(any_form)) return {};
  return info;
}

bool QueryIs64Bit() {
  using Call = void(WINAPI*)(SYSTEM_INFO*);
  SYSTEM_INFO info = {};
  const HMODULE kernel = GetModuleHandleW(TEXT("Kernel32.dll"));
  const auto native =
      kernel ? reinterpret_cast<Call>(reinterpret_cast<void*>(GetProcAddress(kernel, "GetNativeSystemInfo"))) : nullptr;
  if (native) {
    native(&info);
  } else {
    GetSystemInfo(&info);
  }
  return info.wProcessorArchitecture == PROCESSOR_ARCHITECTURE_AMD64 ||
         info.wProcessorArchitecture == PROCESSOR_ARCHITECTURE_IA64;
}

struct CurrentOs {
  CurrentOs() {
    const OSVERSIONINFOEXW info = QueryVersion();
    record = ClassifyOs(info.dwPlatformId, info.dwMajorVersion, info.dwMinorVersion, info.dwBuildNumber);
    record.product_type = info.wProductType;
    record.is64 = QueryIs64Bit();
  }
  OsRecord record;
};
constinit Lazy<CurrentOs> g_current_os;

}  // namespace

OsRecord ClassifyOs(DWORD platform, DWORD major, DWORD minor, DWORD build) {
  OsRecord record;
  record.platform = platform;
  record.major = major;
  record.minor = minor;
  record.build = build;
  for (const VersionRow& row : kVersions) {
    if (!Matches(row.platform, platform) || !Matches(row.major, major) || !Matches(row.minor, minor)) continue;
    if (!Matches(row.build, build)) continue;
    record.name = row.name;
    record.code = row.code;
    return record;
  }
  if (platform == VER_PLATFORM_WIN32_NT && major <= kLastNtMajor) {
    record.name = TEXT("Windows NT");
    record.code = OsNt;
  }
  return record;
}

const OsRecord& GetOsVersion() { return g_current_os.Get().record; }
bool IsOsVersion(DWORD code) { return GetOsVersion().code == code; }
bool IsOsAtLeast(DWORD code) { return OsCodeAtLeast(GetOsVersion().code, code); }
bool Is64BitOs() { return GetOsVersion().is64; }

}  // namespace vanta
