// Windows file attributes from what the archive's maker stored.
#pragma once

#include <windows.h>

namespace vanta {

// `host`: the high byte of the version-made-by field, the system whose meaning `external` has.
DWORD AttributesFromHost(BYTE host, DWORD external);

}  // namespace vanta
