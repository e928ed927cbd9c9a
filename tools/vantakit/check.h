// What in a payload or skin folder will not work. Every finding names the file, texts also the line.
#pragma once

#include <filesystem>
#include <span>

#include "tools/vantakit/findings.h"
#include "tools/vantakit/folder.h"

namespace vantakit {

// Names that cannot be installed, programs that the setup refers to and that are missing or of the wrong kind.
Findings CheckPayload(const std::filesystem::path& folder);

// File names and missing parts; the string table; layouts and global definitions with everything that the library would
// pass over in silence: tags, attributes, values, and names of what is not there. With `unused`, what no layout uses is
// a warning each. Makes a machine of its own current meanwhile.
Findings CheckSkin(const std::filesystem::path& folder, bool unused = false);

// The text of a string table: lines that would be ignored, keys that the setup looks up in vain.
Findings CheckStringTable(const std::string& name, const std::string& utf8);

// The keys that the setup looks up.
std::span<const char* const> NeededStrings();

// The skin's files as they are packed: what lies below "resources". Throws Failure when there is no such folder.
std::vector<FolderEntry> ListSkin(const std::filesystem::path& folder);

}  // namespace vantakit
