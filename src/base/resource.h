// Resources of the running executable.
#pragma once

#include <windows.h>

#include <string_view>

namespace vanta {

// The bytes of a resource, valid for the life of the process; empty when it is missing, unreadable or empty.
std::string_view FindOwnResource(const WCHAR* name, const WCHAR* type);

}  // namespace vanta
