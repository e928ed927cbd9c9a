// The registry key that the maker's programs share. Best effort: without access nothing is read or stored.
#pragma once

#include <windows.h>

#include <string>

#include "base/text.h"

namespace vanta {

// In this process's view, as bytes of the ANSI code page. A stored text that takes up more than `room` bytes with its
// terminator, a missing value and one of another type read as none: false.
bool ReadSharedNarrow(const char* name, size_t room, std::string* text);
void WriteSharedNarrow(const char* name, const std::string& text);

// In the 64-bit view. A text of at most 1,024 bytes; empty for none.
String ReadShared64(const WCHAR* name);
void WriteShared64(const WCHAR* name, const String& text);

}  // namespace vanta
