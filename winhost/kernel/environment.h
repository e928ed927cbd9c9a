// The process's environment as Windows programs see it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace winhost {

// A variable's value, names compared without case: what this process set, else what the machine's facts name, else what
// every Windows process has (TEMP, USERNAME, SystemRoot …), else the Linux environment's, without the names that mean
// something else there (PATH, HOME, TMPDIR and the like).
std::optional<std::u16string> EnvironmentVariable(std::u16string_view name);

}  // namespace winhost
