// The programs that every Windows has and that are more than a name here: regsvr32.exe in the system folders. They are
// Linux programs of this build (winhost/programs), copied into a machine when they are first needed.
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

namespace winhost {

// Where the build put them: the folder of the running executable, or winhost/programs in one of its parents, else the
// folder that VANTA_HOST_PROGRAMS names.
std::optional<std::filesystem::path> HostProgramsFolder();
// Puts all of them into the current machine; what is there already stays. Without the build's programs nothing happens.
void ProvideSystemPrograms();
// The same for the one that a Windows path names, if it names one.
void ProvideSystemProgram(std::u16string_view path);

}  // namespace winhost
