// What in a payload or skin folder will not work. Every finding names the file, texts also the line.
#pragma once

#include <filesystem>

#include "tools/vantakit/findings.h"
#include "tools/vantakit/folder.h"

namespace vantakit {

// Names that cannot be installed, programs that the setup refers to and that are missing or of the wrong kind.
Findings CheckPayload(const std::filesystem::path& folder);

// Names, missing parts, and the string table: lines that would be ignored, keys that the setup looks up in vain.
Findings CheckSkin(const std::filesystem::path& folder);

// The same for the text of a string table; `name` stands before every finding.
Findings CheckStringTable(const std::string& name, const std::string& utf8);

// The skin's files as they are packed: what lies below "resources". Throws Failure when there is no such folder.
std::vector<FolderEntry> ListSkin(const std::filesystem::path& folder);

}  // namespace vantakit
