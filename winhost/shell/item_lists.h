// Item identifier lists in memory, as programs get them.
#pragma once

#include <shtypes.h>
#include <windows.h>

#include <string>

namespace winhost {

// The list of a folder, which the caller frees with CoTaskMemFree. Null for a path that is on no drive and no share, or
// whose share has a name that lists cannot hold.
PIDLIST_ABSOLUTE MakeIdList(const std::u16string& folder);

}  // namespace winhost
