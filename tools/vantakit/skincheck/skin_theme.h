// One theme of a skin as a layout sees it: the names that it may use, and the files, found as the library finds them.
// Everything that is found is marked as used.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "lumo/core/resource_source.h"
#include "tools/vantakit/folder.h"

namespace vantakit {

struct Definition {
  int line = 0;
  bool used = false;
};
using Definitions = std::map<lumo::String, Definition, std::less<>>;

struct ThemeAttribute {
  lumo::String name;
  lumo::String value;
  int line;
};
struct ThemeDefinition : Definition {
  std::vector<ThemeAttribute> attributes;
};
using ThemeDefinitions = std::map<lumo::String, ThemeDefinition, std::less<>>;

class SkinTheme final : public lumo::ResourceSource {
 public:
  // `folder` is where the theme lies in the package: "resources/themes/default/". The entries and the keys of the
  // string table must outlive this.
  SkinTheme(std::string folder, const std::vector<FolderEntry>& entries, Definitions& keys);

  const std::string& Folder() const { return folder_; }
  // The entries below the folder.
  std::vector<const FolderEntry*> Entries() const;
  const FolderEntry* FindEntry(lumo::StringView path) const;  // null for none; any spelling that the package finds
  bool IsUsed(const FolderEntry& entry) const;

  bool IsPackaged() const override { return true; }
  const lumo::String& ThemeFolder() const override { return written_folder_; }
  bool Read(lumo::StringView path, std::vector<BYTE>* bytes) const override;
  bool Exists(lumo::StringView path) const override { return FindEntry(path) != nullptr; }
  lumo::String GetString(lumo::StringView) const override { return {}; }

  Definitions colors;
  Definitions fonts;
  ThemeDefinitions themes;
  Definitions& keys;

 private:
  struct File {
    const FolderEntry* entry = nullptr;
    mutable bool used = false;
  };

  std::string folder_;
  lumo::String written_folder_;
  std::map<std::u16string, File> files_;  // by upper-cased name
};

// The definition of the name, now used; null for none.
template <class Map>
typename Map::mapped_type* Use(Map& definitions, lumo::StringView name) {
  const auto found = definitions.find(name);
  if (found == definitions.end()) return nullptr;
  found->second.used = true;
  return &found->second;
}

}  // namespace vantakit
