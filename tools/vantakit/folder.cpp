#include "tools/vantakit/folder.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "tools/vantakit/commands.h"

namespace vantakit {

namespace fs = std::filesystem;

std::vector<FolderEntry> ListFolder(const fs::path& folder) {
  if (!fs::is_directory(folder)) throw Failure(folder.string() + ": no such folder");
  std::vector<FolderEntry> entries;
  std::error_code error;
  fs::recursive_directory_iterator place(folder, error);
  for (; !error && place != fs::recursive_directory_iterator(); place.increment(error)) {
    if (place->is_directory()) {
      // Such links can go in a circle, and nobody sees in the folder what would be packed.
      if (place->is_symlink()) throw Failure(place->path().string() + ": a link to a folder");
      continue;
    }
    if (!place->is_regular_file()) throw Failure(place->path().string() + ": neither a file nor a folder");
    entries.push_back({place->path().lexically_relative(folder).generic_string(), place->path()});
  }
  if (error) throw Failure(folder.string() + ": " + error.message());
  std::sort(entries.begin(), entries.end(), [](const FolderEntry& a, const FolderEntry& b) { return a.name < b.name; });
  return entries;
}

std::string ReadText(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(in), {}};
  if (!in.is_open() || in.bad()) throw Failure(file.string() + ": cannot be read");
  return text;
}

}  // namespace vantakit
