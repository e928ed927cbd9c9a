// Archives for the setup: deflated files, names in UTF-8, UT times, no folders, no ZIP64.
#pragma once

#include <filesystem>
#include <vector>

#include "tools/vantakit/folder.h"

namespace vantakit {

// Writes `entries` in their order. A file's time is SOURCE_DATE_EPOCH (seconds) where the environment has one, else its
// own. `level` is 0 (stored) to 9. Throws Failure; also for more than 65,535 files or 2 GiB, which no setup can carry.
void WriteArchive(const std::vector<FolderEntry>& entries, int level, const std::filesystem::path& out);

}  // namespace vantakit
