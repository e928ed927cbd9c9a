// Which Windows runs. The record is filled on first use and kept for the process; any thread.
#pragma once

#include <windows.h>

namespace vanta {

// One bit a version, rising with age, so that "at least" is a comparison. 0: a version without a name.
enum OsCode : DWORD {
  OsUnknown = 0,
  OsWindows32 = 0x1,
  Os9x = 0x8,
  OsMe = 0x20,
  OsNt = 0x40,
  Os2000 = 0x80,
  OsXp = 0x100,
  Os2003 = 0x200,
  OsVista = 0x400,
  Os7 = 0x800,
  Os8 = 0x1000,
  Os81 = 0x2000,
  Os10 = 0x4000,
};

struct OsRecord {
  DWORD major = 0;
  DWORD minor = 0;
  DWORD build = 0;
  DWORD platform = 0;
  BYTE product_type = 0;
  const WCHAR* name = TEXT("");  // what reports call it; empty for an unknown version. A literal
  DWORD code = OsUnknown;
  bool is64 = false;
};

// Name and code of a version; product type and bitness stay at their defaults. Pure.
OsRecord ClassifyOs(DWORD platform, DWORD major, DWORD minor, DWORD build);
// Whether `code` is at least `wanted`, which is how IsOsAtLeast compares. Pure.
constexpr bool OsCodeAtLeast(DWORD code, DWORD wanted) { return wanted <= code; }

const OsRecord& GetOsVersion();
bool IsOsVersion(DWORD code);
bool IsOsAtLeast(DWORD code);
// Whether the processor is AMD64 or IA-64, whatever this process is. An ARM64 machine counts as not 64-bit.
bool Is64BitOs();

}  // namespace vanta
