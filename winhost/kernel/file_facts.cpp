#include "winhost/kernel/file_facts.h"

#include <algorithm>

#include "winhost/kernel/file_system.h"
#include "winhost/kernel/paths.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

FileFact FactOf(std::u16string path, const FileStat& stat) {
  return {std::move(path), stat.directory, stat.size, stat.attributes, stat.creation, stat.access, stat.modification};
}

struct Name {
  std::u16string upcased, wide;
  std::string on_disk;
};

std::vector<Name> NamesIn(const std::filesystem::path& folder) {
  std::vector<Name> names;
  std::error_code error;
  for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    std::string on_disk = entry->path().filename().string();
    std::u16string wide = Wide(on_disk);
    names.push_back({Upcase(wide), std::move(wide), std::move(on_disk)});
  }
  std::sort(names.begin(), names.end(), [](const Name& a, const Name& b) { return a.upcased < b.upcased; });
  return names;
}

void List(const std::filesystem::path& folder, const std::u16string& windows, std::vector<FileFact>* facts) {
  for (const Name& name : NamesIn(folder)) {
    const std::filesystem::path path = folder / name.on_disk;
    FileStat stat;
    if (!ReadFileStat({-1, path.c_str()}, &stat)) continue;
    facts->push_back(FactOf(windows + name.wide, stat));
    std::error_code error;
    // A link to a folder is shown but not followed: it may lead round in a circle.
    if (stat.directory && !std::filesystem::is_symlink(path, error)) List(path, windows + name.wide + u"\\", facts);
  }
}

}  // namespace

std::vector<FileFact> ListFiles(const std::u16string& folder) {
  std::vector<FileFact> facts;
  const auto path = LinuxPath(folder);
  std::u16string windows = folder;
  if (!windows.empty() && windows.back() != u'\\') windows += u'\\';
  if (path) List(*path, windows, &facts);
  return facts;
}

std::vector<std::u16string> ListDrives() {
  std::vector<std::u16string> roots;
  FileSystem& files = FileSystem::Current();
  for (const char16_t letter : files.DriveLetters()) {
    std::error_code error;
    const auto own = files.machine().folder() / std::string(1, static_cast<char>(letter));
    if (std::filesystem::is_directory(own, error)) roots.push_back({letter, u':', u'\\'});
  }
  return roots;
}

}  // namespace winhost
