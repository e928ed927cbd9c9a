// File name patterns as FindFirstFileW knows them.
#pragma once

#include <string_view>

namespace winhost {

// Without regard to case: "*" any run, "?" one character (or the end, in a trailing run of them), "*.*" everything, and
// a pattern that ends in "." after a wildcard names without an extension.
bool MatchesWildcard(std::u16string_view pattern, std::u16string_view name);

}  // namespace winhost
