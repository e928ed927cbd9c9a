// The 32- and 64-bit views of the registry. A logical path, as a program names a key, becomes a stored path: on 64-bit
// Windows the 32-bit view of a redirected key lies below a "Wow6432Node"; shared keys are one in both views.
//
// A path is its components, the root's short name first: {"HKLM", "SOFTWARE", "Vendor"}. Roots: HKLM, HKCU, HKU, HKCR.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "winhost/machine/facts.h"

namespace winhost {

using KeyPath = std::vector<std::u16string>;

enum class View { Bits32, Bits64 };

// Components of "a\b\\c\": empty ones fall away.
KeyPath SplitKeyPath(std::u16string_view path);
std::u16string JoinKeyPath(const KeyPath& path);

// What a process of this machine sees when it gives no view flag.
View DefaultView(const Facts& facts);
KeyPath StoredPath(const KeyPath& logical, View view, const Facts& facts);
// The inverse, for listings: {"HKLM", "SOFTWARE", "Wow6432Node", "Vendor"} is {"HKLM32", "SOFTWARE", "Vendor"}.
KeyPath ListedPath(const KeyPath& stored, const Facts& facts);

}  // namespace winhost
