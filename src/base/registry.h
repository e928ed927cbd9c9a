// The registry calls of the setup. Keys are opened in the view of this process unless a function takes a view.
#pragma once

#include "base/text.h"

namespace vanta {

// Each write makes the key where it is missing. False when no root is given, the key is empty or the system refuses.
// A text is stored as REG_SZ with two bytes a character and no terminator counted.
bool RegWriteString(HKEY root, const String& key, const String& name, StringView text);
bool RegWriteDword(HKEY root, const String& key, const String& name, DWORD number);
bool RegWriteQword(HKEY root, const String& key, const String& name, ULONGLONG number);

// A text of at most 1,024 bytes, up to its first terminator. False and an empty text when the value is missing, not
// readable, no text or longer.
bool RegReadString(HKEY root, const String& key, const String& name, String* text);

// The key can be opened for reading; `view` is 0, KEY_WOW64_32KEY or KEY_WOW64_64KEY.
bool RegKeyExists(HKEY root, const String& key, REGSAM view);

}  // namespace vanta
