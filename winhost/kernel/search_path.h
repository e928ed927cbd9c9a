// Where LoadLibrary looks.
#pragma once

#include <minwindef.h>

#include <string>
#include <string_view>
#include <vector>

namespace winhost {

// Whether the machine's Windows has the LOAD_LIBRARY_SEARCH flags and their functions.
bool HasSearchFlags();
// Folders in their order for a library given by its bare name, or by relative path. `flags` as LoadLibraryExW takes
// them; without search flags those of SetDefaultDllDirectories count, and without these the old order.
std::vector<std::u16string> SearchFolders(DWORD flags);
// 0 for flags that LoadLibraryExW takes on this Windows, with this name; else the error.
DWORD CheckLoadFlags(std::u16string_view name, DWORD flags);

inline constexpr std::u16string_view kSystemFolder = u"C:\\Windows\\system32";
inline constexpr std::u16string_view kWowFolder = u"C:\\Windows\\SysWOW64";

}  // namespace winhost
