#include <algorithm>
#include <set>

#include "setupui/string_table.h"
#include "tools/vantakit/check.h"
#include "tools/vantakit/commands.h"
#include "tools/vantakit/name_rules.h"
#include "tools/vantakit/passing_machine.h"
#include "tools/vantakit/skincheck/theme_check.h"

namespace vantakit {
namespace {

constexpr char kTable[] = "resources/lang/zh-CN/gdstrings.ini";
constexpr char kThemes[] = "resources/themes/";
constexpr char kTheme[] = "resources/themes/default/";
// The layouts that the setup opens.
constexpr const char* kNeededLayouts[] = {"SetupWnd/SetupWnd.xml", "MessageWnd/MessageWnd.xml"};

bool Holds(const std::vector<FolderEntry>& entries, const std::string& name) {
  return std::ranges::find(entries, name, &FolderEntry::name) != entries.end();
}

Definitions ReadKeys(const std::string& utf8) {
  Definitions keys;
  for (const auto& [key, value] : vanta::ParseStringTable(utf8)) keys[key] = {};
  return keys;
}

// "resources/themes/NAME/", the setup's own among them even when it is not there.
std::set<std::string> ThemeFolders(const std::vector<FolderEntry>& entries) {
  std::set<std::string> folders = {kTheme};
  for (const FolderEntry& entry : entries) {
    const std::size_t end = entry.name.find('/', sizeof kThemes - 1);
    if (entry.name.starts_with(kThemes) && end != entry.name.npos) folders.insert(entry.name.substr(0, end + 1));
  }
  return folders;
}

void FindUnusedKeys(Definitions& keys, Findings* findings) {
  for (const char* const key : NeededStrings()) Use(keys, vanta::FromUtf8(key));
  for (const auto& [key, definition] : keys) {
    if (!definition.used) findings->push_back({kTable, vanta::ToUtf8(key) + " is not used", 0, Finding::Warning});
  }
}

}  // namespace

std::vector<FolderEntry> ListSkin(const std::filesystem::path& folder) {
  if (!std::filesystem::is_directory(folder / "resources"))
    throw Failure(folder.string() + ": holds no folder \"resources\"");
  std::vector<FolderEntry> entries = ListFolder(folder);
  std::erase_if(entries, [](const FolderEntry& entry) { return !entry.name.starts_with("resources/"); });
  return entries;
}

Findings CheckSkin(const std::filesystem::path& folder, bool unused) {
  const std::vector<FolderEntry> entries = ListSkin(folder);
  const bool has_table = Holds(entries, kTable);
  const std::string table = has_table ? ReadText(folder / kTable) : std::string();
  Findings findings = CheckEntryNames(entries);
  if (has_table) {
    Append(CheckStringTable(kTable, table), &findings);
  } else {
    findings.push_back({kTable, "missing; the setup has no texts"});
  }
  for (const char* const layout : kNeededLayouts) {
    if (!Holds(entries, kTheme + std::string(layout)))
      findings.push_back({kTheme + std::string(layout), "missing; the setup opens it"});
  }
  Definitions keys = ReadKeys(table);
  const PassingMachine machine;
  for (const std::string& theme_folder : ThemeFolders(entries)) {
    SkinTheme theme(theme_folder, entries, keys);
    Append(CheckTheme(theme, unused), &findings);
  }
  if (unused) FindUnusedKeys(keys, &findings);
  return findings;
}

}  // namespace vantakit
