#include "winhost/dialogs/folder_places.h"

#include <shlwapi.h>
#include <windows.h>

#include <algorithm>

#include "winhost/kernel/file_system.h"
#include "winhost/machine/machine.h"
#include "winhost/machine/text.h"
#include "winhost/shell/folder_layout.h"

namespace winhost {
namespace {

// What Windows calls it in each version.
std::u16string ComputerName() {
  const Facts& facts = Machine::Current().facts();
  if (facts.AtLeast(10, 0)) return u"此电脑";
  if (facts.AtLeast(6, 2)) return u"这台电脑";
  return facts.AtLeast(6, 0) ? u"计算机" : u"我的电脑";
}

FolderPlace DrivePlace(char16_t letter, const std::string& kind) {
  const std::u16string path{letter, u':', u'\\'}, mark = std::u16string(u" (") + letter + u":)";
  if (kind == "removable") return {u"可移动磁盘" + mark, path, Glyph::Removable};
  if (kind == "network") return {u"网络驱动器" + mark, path, Glyph::Network};
  if (kind == "cdrom") return {u"CD 驱动器" + mark, path, Glyph::Disc};
  return {u"本地磁盘" + mark, path, Glyph::Drive};
}

std::vector<FolderPlace> Drives() {
  FileSystem& files = FileSystem::Current();
  std::vector<FolderPlace> drives;
  for (const char16_t letter : files.DriveLetters()) {
    if (const Drive* drive = files.FindDrive(letter)) drives.push_back(DrivePlace(letter, drive->facts.kind));
  }
  return drives;
}

std::u16string Below(const std::u16string& folder, const std::u16string& name) {
  return folder.back() == u'\\' ? folder + name : folder + u'\\' + name;
}

bool IsShown(const std::string& linux_path) {
  FileStat stat;
  constexpr DWORD kUnseen = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
  return ReadFileStat({-1, linux_path.c_str()}, &stat) && stat.directory && !(stat.attributes & kUnseen);
}

std::u16string_view Trimmed(std::u16string_view text) {
  constexpr std::u16string_view kAround = u" \t\"";
  const std::size_t first = text.find_first_not_of(kAround);
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(kAround) - first + 1);
}

bool ParseTyped(std::u16string_view typed, const std::u16string& current, FullPath* full) {
  std::u16string text(Trimmed(typed));
  if (text.size() == 2 && text[1] == u':') text += u'\\';
  if (text.empty() || (current.empty() && PathIsRelativeW(text.c_str()))) return false;
  return ParsePath(text, current, full) == 0 && full->kind != FullPath::Kind::Device;
}

}  // namespace

std::vector<FolderPlace> PlacesIn(const std::u16string& folder) {
  EnsureStandardFolders();
  if (folder.empty()) return Drives();
  Place inside;  // a name below the folder makes the file system hand out the folder itself
  if (FileSystem::Current().LocateText(Below(folder, u"x"), &inside, {32767, ERROR_PATH_NOT_FOUND}) != 0) return {};
  std::vector<std::string> names;
  ReadNames(inside.folder->fd(), &names);
  std::vector<FolderPlace> places;
  for (const std::string& name : names) {
    if (!IsShown(inside.folder->linux_path() + "/" + name)) continue;
    const std::u16string wide = Wide(name);
    places.push_back({wide, Below(folder, wide), Glyph::Folder});
  }
  std::ranges::sort(places, {}, [](const FolderPlace& place) { return std::pair(Upcase(place.name), place.name); });
  return places;
}

FolderPlace PlaceOf(const std::u16string& folder) {
  if (folder.empty()) return {ComputerName(), folder, Glyph::Computer};
  FullPath full;
  if (ParsePath(folder, u"C:\\", &full) != 0 || !full.IsRoot()) return {folder, folder, Glyph::Folder};
  if (full.kind == FullPath::Kind::Unc) return {folder, folder, Glyph::Network};
  const Drive* const drive = FileSystem::Current().FindDrive(folder[0]);
  return DrivePlace(folder[0], drive ? drive->facts.kind : "fixed");
}

std::u16string PlaceAbove(const std::u16string& folder) {
  FullPath full;
  if (folder.empty() || ParsePath(folder, u"C:\\", &full) != 0 || full.IsRoot()) return {};
  return std::u16string(full.Parent());
}

FolderSearch FindFolder(std::u16string_view typed, const std::u16string& current, std::u16string* found) {
  EnsureStandardFolders();
  FullPath full;
  if (!ParseTyped(typed, current, &full)) return FolderSearch::Missing;
  Place place;
  FileStat stat;
  FileSystem& files = FileSystem::Current();
  if (files.Locate(full, &place) != 0 || files.Stat(&place, &stat) != 0) return FolderSearch::Missing;
  if (!stat.directory) return FolderSearch::NoFolder;
  *found = place.WindowsPath();
  return FolderSearch::Found;
}

}  // namespace winhost
