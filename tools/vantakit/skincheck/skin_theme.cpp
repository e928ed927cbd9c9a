#include "tools/vantakit/skincheck/skin_theme.h"

#include "setupui/skin_path.h"
#include "winhost/machine/text.h"

namespace vantakit {

SkinTheme::SkinTheme(std::string folder, const std::vector<FolderEntry>& entries, Definitions& table_keys)
    : keys(table_keys), folder_(std::move(folder)), written_folder_(vanta::FromUtf8(folder_)) {
  for (WCHAR& c : written_folder_) {
    if (c == '/') c = '\\';
  }
  for (const FolderEntry& entry : entries) files_[winhost::Upcase(vanta::FromUtf8(entry.name))].entry = &entry;
}

std::vector<const FolderEntry*> SkinTheme::Entries() const {
  std::vector<const FolderEntry*> entries;
  for (const auto& [name, file] : files_) {
    if (file.entry->name.starts_with(folder_)) entries.push_back(file.entry);
  }
  return entries;
}

const FolderEntry* SkinTheme::FindEntry(lumo::StringView path) const {
  const std::optional<lumo::String> normal = vanta::NormaliseSkinPath(path);
  const auto found = normal ? files_.find(winhost::Upcase(*normal)) : files_.end();
  if (found == files_.end()) return nullptr;
  found->second.used = true;
  return found->second.entry;
}

bool SkinTheme::IsUsed(const FolderEntry& entry) const {
  const auto found = files_.find(winhost::Upcase(vanta::FromUtf8(entry.name)));
  return found != files_.end() && found->second.used;
}

bool SkinTheme::Read(lumo::StringView path, std::vector<BYTE>* bytes) const {
  bytes->clear();
  const FolderEntry* const entry = FindEntry(path);
  if (!entry) return false;
  const std::string text = ReadText(entry->file);
  bytes->assign(text.begin(), text.end());
  return true;
}

}  // namespace vantakit
