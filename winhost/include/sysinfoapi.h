// System information: version, processors, system folders, ticks and time of day.
//
// Promises: what the machine's facts say of version, bitness and architecture; GetVersionExW tells a manifested program
// the true version; on a machine without "rtl_get_version" the export is absent. Ticks and times follow its clock.
// Simplifies: processor counts are the Linux ones; no service pack names.
// To fail: the fault plan, "GetVersionExW", "GetWindowsDirectoryW", "GetSystemDirectoryW".
#pragma once

#include <minwinbase.h>
#include <winnt.h>

#define VER_PLATFORM_WIN32s 0
#define VER_PLATFORM_WIN32_WINDOWS 1
#define VER_PLATFORM_WIN32_NT 2
#define VER_NT_WORKSTATION 0x0000001
#define VER_NT_DOMAIN_CONTROLLER 0x0000002
#define VER_NT_SERVER 0x0000003

struct OSVERSIONINFOW {
  DWORD dwOSVersionInfoSize;
  DWORD dwMajorVersion;
  DWORD dwMinorVersion;
  DWORD dwBuildNumber;
  DWORD dwPlatformId;
  WCHAR szCSDVersion[128];
};
using POSVERSIONINFOW = OSVERSIONINFOW*;
using LPOSVERSIONINFOW = OSVERSIONINFOW*;
using RTL_OSVERSIONINFOW = OSVERSIONINFOW;
using PRTL_OSVERSIONINFOW = OSVERSIONINFOW*;

struct OSVERSIONINFOEXW {
  DWORD dwOSVersionInfoSize;
  DWORD dwMajorVersion;
  DWORD dwMinorVersion;
  DWORD dwBuildNumber;
  DWORD dwPlatformId;
  WCHAR szCSDVersion[128];
  WORD wServicePackMajor;
  WORD wServicePackMinor;
  WORD wSuiteMask;
  BYTE wProductType;
  BYTE wReserved;
};
using POSVERSIONINFOEXW = OSVERSIONINFOEXW*;
using LPOSVERSIONINFOEXW = OSVERSIONINFOEXW*;
using RTL_OSVERSIONINFOEXW = OSVERSIONINFOEXW;
using PRTL_OSVERSIONINFOEXW = OSVERSIONINFOEXW*;

#define PROCESSOR_ARCHITECTURE_INTEL 0
#define PROCESSOR_ARCHITECTURE_ARM 5
#define PROCESSOR_ARCHITECTURE_IA64 6
#define PROCESSOR_ARCHITECTURE_AMD64 9
#define PROCESSOR_ARCHITECTURE_ARM64 12
#define PROCESSOR_ARCHITECTURE_UNKNOWN 0xffff

struct SYSTEM_INFO {
  union {
    DWORD dwOemId;
    struct {
      WORD wProcessorArchitecture;
      WORD wReserved;
    };
  };
  DWORD dwPageSize;
  LPVOID lpMinimumApplicationAddress;
  LPVOID lpMaximumApplicationAddress;
  DWORD_PTR dwActiveProcessorMask;
  DWORD dwNumberOfProcessors;
  DWORD dwProcessorType;
  DWORD dwAllocationGranularity;
  WORD wProcessorLevel;
  WORD wProcessorRevision;
};
using LPSYSTEM_INFO = SYSTEM_INFO*;

BOOL WINAPI GetVersionExW(LPOSVERSIONINFOW version);
void WINAPI GetSystemInfo(LPSYSTEM_INFO info);
void WINAPI GetNativeSystemInfo(LPSYSTEM_INFO info);
// Both answer the length without terminator, or the size needed with it when the buffer is too small.
UINT WINAPI GetWindowsDirectoryW(LPWSTR buffer, UINT chars);
UINT WINAPI GetSystemDirectoryW(LPWSTR buffer, UINT chars);

DWORD WINAPI GetTickCount();
void WINAPI GetSystemTime(LPSYSTEMTIME time);
void WINAPI GetLocalTime(LPSYSTEMTIME time);
void WINAPI GetSystemTimeAsFileTime(LPFILETIME time);
