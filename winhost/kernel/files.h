// What other subsystems need of files beyond the Win32 calls themselves.
#pragma once

#include <minwindef.h>

#include <optional>
#include <string>
#include <string_view>

namespace winhost {

// Opens the file of a running program or a loaded library: readable to everybody, but while the handle lives nobody may
// write or delete it; renaming it is allowed, as for an image that Windows runs. INVALID_HANDLE_VALUE with the last
// error set on failure. The fault plan's operation is "OpenImage".
HANDLE OpenImage(std::u16string_view path);

// The Linux descriptor behind a file handle; it stays the handle's. None for anything that is no open file.
std::optional<int> LinuxDescriptor(HANDLE file);
// The full Windows path with which the handle was opened; empty for anything that is no open file.
std::u16string PathOfFile(HANDLE file);

}  // namespace winhost
