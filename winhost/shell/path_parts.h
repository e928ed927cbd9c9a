// The calculations behind the path functions, without their length limits.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace winhost {

// "." goes, ".." goes with the component before it but never past the root, doubled separators stay. A relative path
// whose first component went away begins with "\" afterwards; nothing left is "\"; a bare drive gets its "\".
std::u16string CanonicalPath(std::u16string_view path);
// `file` below `folder`; `file` alone where it is full, below the folder's root where it begins with one "\".
std::u16string JoinedPath(LPCWSTR folder, LPCWSTR file);
// Characters of the whole components with which both begin, without regard to case.
int CommonComponents(std::u16string_view a, std::u16string_view b);

}  // namespace winhost
