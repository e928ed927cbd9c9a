// The files below a folder, as entries of an archive.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace vantakit {

struct FolderEntry {
  std::string name;            // relative, UTF-8, "/" between components
  std::filesystem::path file;  // where its bytes are
};

// Every file below `folder`, sorted by name; links to files are followed, folders themselves are no entries. Throws
// Failure when it is no readable folder or something in it is neither file nor folder, or a link to a folder.
std::vector<FolderEntry> ListFolder(const std::filesystem::path& folder);

std::string ReadText(const std::filesystem::path& file);  // throws Failure

}  // namespace vantakit
