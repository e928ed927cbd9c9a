// The skin's texts: gdstrings.ini of the language folder.
//
// Loaded once at start-up; afterwards any thread may look up, except where a function says otherwise.
#pragma once

#include "base/text.h"

#include <map>

namespace vanta {

using StringTable = std::map<String, String, std::less<>>;

// Parses a whole file: UTF-8 lines "key = value". Lines of another shape and comments (a ";" in the key) are passed
// over; a later line of the same key wins. Values are stored as written. Pure.
StringTable ParseStringTable(std::string_view utf8);
// The same for a file that is read in lines of at most `limit` bytes: what is longer counts as several lines.
StringTable ParseStringTable(std::string_view utf8, size_t limit);

// The characters \r and \n of a stored value as CR and LF; other backslashes stay. Pure.
String ExpandEscapes(StringView value);

// Fills the process's table from the skin package or, when no package is open, from the disk below the current
// directory. `language_folder` ends in a separator.
void LoadStringTable(StringView language_folder);

// The text of a key with its escapes expanded; "" when there is none.
String GetString(StringView key);
// The same in one buffer of the process, valid until the next call of this form. UI thread only.
const WCHAR* GetStringShared(StringView key);

}  // namespace vanta
