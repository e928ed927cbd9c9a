// The tables that InitLibs of the maker's public libraries fill: 256 bytes each. The caller sets `size` to what it
// offers; entries that a library does not know stay null.
#pragma once

#include <windows.h>

namespace vanta {

inline constexpr DWORD kExportTableBytes = 256;

struct CVantaBaseExportFuncs {
  DWORD size;
  DWORD version;
  // Non-zero when a level (TrustLevel) was decided. Only tables of a version above 10 have it.
  BOOL(WINAPI* file_trust_level)(const WCHAR* path, LONG* level);
  BYTE reserved[kExportTableBytes - 2 * sizeof(DWORD) - sizeof(void*)];
};

// Nothing of these two libraries is called by the setup.
struct CVantaConfExportFuncs {
  DWORD size;
  DWORD version;
  BYTE reserved[kExportTableBytes - 2 * sizeof(DWORD)];
};
struct CVantaUtilExportFuncs {
  DWORD size;
  DWORD version;
  BYTE reserved[kExportTableBytes - 2 * sizeof(DWORD)];
};

static_assert(sizeof(CVantaBaseExportFuncs) == kExportTableBytes);
static_assert(sizeof(CVantaConfExportFuncs) == kExportTableBytes);
static_assert(sizeof(CVantaUtilExportFuncs) == kExportTableBytes);

}  // namespace vanta
