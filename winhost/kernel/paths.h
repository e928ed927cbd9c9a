// Between the machine's paths and Linux's.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace winhost {

// Where a Windows path (absolute, or relative to the current directory) lies on Linux. Existing components are found
// without regard to case; a last component that does not exist gives where it would be made. None for a path that
// cannot exist: no such drive or folder, bad characters, a device.
std::optional<std::filesystem::path> LinuxPath(std::u16string_view windows_path);
// The reverse, purely by text: "C:\…" or "\\server\share\…" inside the machine's folder, "Z:\…" outside. A relative
// path counts from the Linux current directory.
std::u16string WindowsPath(const std::filesystem::path& linux_path);

// The process's current directory as Windows sees it, without a trailing separator except for a drive's root.
std::u16string CurrentDirectory();

}  // namespace winhost
