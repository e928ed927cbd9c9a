#include "winhost/shell/id_list.h"

#include <algorithm>
#include <ctime>
#include <vector>

#include "winhost/shell/link_format.h"

namespace winhost {
namespace {

using link::Ansi;
using link::ReadAt;
using link::Ticks;
using link::Writer;

// Date in the low word, time in the high one, in two-second steps; 0 outside 1980…2107.
std::uint32_t FatTime(const FILETIME& time) {
  constexpr std::int64_t kEpochSeconds = 11'644'473'600;
  const std::time_t seconds = static_cast<std::int64_t>(Ticks(time) / 10'000'000) - kEpochSeconds;
  std::tm broken{};
  if (!gmtime_r(&seconds, &broken) || broken.tm_year < 80 || broken.tm_year > 207) return 0;
  const int date = (broken.tm_year - 80) << 9 | (broken.tm_mon + 1) << 5 | broken.tm_mday;
  const int clock = broken.tm_hour << 11 | broken.tm_min << 5 | broken.tm_sec / 2;
  return static_cast<std::uint32_t>(clock) << 16 | static_cast<std::uint32_t>(date);
}

// Characters of the root, "C:\" or "\\server\share"; 0 for a path that has none of the two.
std::size_t RootLength(std::u16string_view path) {
  if (IsOnDrive(path)) return 3;
  if (!path.starts_with(u"\\\\")) return 0;
  const std::size_t server = path.find(u'\\', 2);
  if (server == path.npos || server == 2 || server + 1 >= path.size()) return 0;
  return std::min(path.find(u'\\', server + 1), path.size());
}

std::vector<std::u16string_view> Components(std::u16string_view path) {
  std::vector<std::u16string_view> parts;
  for (std::size_t start = 0; start < path.size();) {
    const std::size_t end = std::min(path.find(u'\\', start), path.size());
    if (end > start) parts.push_back(path.substr(start, end - start));
    start = end + 1;
  }
  return parts;
}

void PutItem(Writer& list, const std::string& data) { list.Put(static_cast<std::uint16_t>(data.size() + 2)).Put(data); }

struct ItemFacts {
  std::uint8_t type;
  std::uint32_t size;
  std::uint32_t attributes;
  std::uint32_t created, accessed, written;  // FAT form
};

std::string FileSystemItem(std::u16string_view name, const ItemFacts& facts) {
  Writer item;
  item.Put(facts.type).Put(std::uint8_t{0}).Put(facts.size).Put(facts.written);
  item.Put(static_cast<std::uint16_t>(facts.attributes)).Put(Ansi(name)).Put(std::uint8_t{0});
  if (item.size() % 2) item.Put(std::uint8_t{0});
  const auto extension_at = static_cast<std::uint16_t>(item.size() + 2);  // counted from the item's size field
  constexpr std::size_t kExtensionFixed = 20 + 2;                         // all of it but the name
  item.Put(static_cast<std::uint16_t>(kExtensionFixed + 2 * (name.size() + 1)));
  item.Put(std::uint16_t{3}).Put(std::uint32_t{link::kNameExtension}).Put(facts.created).Put(facts.accessed);
  item.Put(std::uint16_t{0x14}).Put(std::uint16_t{0}).PutWide(name).Put(extension_at);
  return item.Take();
}

// This PC and the drive, or the network and the share.
void PutRoot(Writer& list, std::u16string_view root) {
  constexpr char kThisPc[] = "\x1F\x50\xE0\x4F\xD0\x20\xEA\x3A\x69\x10\xA2\xD8\x08\x00\x2B\x30\x30\x9D";
  constexpr char kNetwork[] = "\x1F\x58\x60\x2C\x8D\x20\xEA\x3A\x69\x10\xA2\xD7\x08\x00\x2B\x30\x30\x9D";
  if (root[1] == u':') {
    PutItem(list, std::string(kThisPc, sizeof kThisPc - 1));
    PutItem(list, Writer().Put(link::kDriveItem).Put(Ansi(root)).Zeros(19).Take());
  } else {
    PutItem(list, std::string(kNetwork, sizeof kNetwork - 1));
    PutItem(list, Writer().Put(link::kShareItem).Zeros(2).Put(Ansi(root)).Zeros(1).Take());
  }
}

// The long name of a folder's or file's item: in its extension block, else the primary name.
std::u16string ItemName(std::string_view item) {
  if (const auto at = ReadAt<std::uint16_t>(item, item.size() - 2); at && *at >= 14 && *at % 2 == 0) {
    const auto version = ReadAt<std::uint16_t>(item, *at + 2u);
    const auto signature = ReadAt<std::uint32_t>(item, *at + 4u);
    if (version && signature == link::kNameExtension) {
      std::size_t name = *at + 18u;
      if (*version >= 7) name += 18;
      if (*version >= 3) name += 2;
      if (*version >= 9) name += 4;
      if (*version >= 8) name += 4;
      if (auto text = link::WideAt(item, name); !text.empty()) return text;
    }
  }
  const bool wide = (static_cast<unsigned char>(item[2]) & link::kUnicodeName) != 0;
  return wide ? link::WideAt(item, 14) : link::AnsiAt(item, 14);
}

}  // namespace

bool IsOnDrive(std::u16string_view path) {
  const auto letter = path.empty() ? u'\0' : static_cast<char16_t>(path[0] | 0x20);
  return path.size() >= 3 && letter >= u'a' && letter <= u'z' && path[1] == u':' && path[2] == u'\\';
}

std::string IdListOf(const LinkFile& from) {
  const std::u16string_view target = from.target;
  const std::size_t root = RootLength(target);
  if (root == 0) return {};
  Writer list;
  PutRoot(list, target.substr(0, root));
  const auto parts = Components(target.substr(root));
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const bool file = i + 1 == parts.size() && !(from.attributes & FILE_ATTRIBUTE_DIRECTORY);
    PutItem(list, FileSystemItem(parts[i],
                                 file ? ItemFacts{link::kFileItem, from.size, from.attributes, FatTime(from.created),
                                                  FatTime(from.accessed), FatTime(from.written)}
                                      : ItemFacts{link::kFolderItem, 0, FILE_ATTRIBUTE_DIRECTORY, 0, 0, 0}));
  }
  list.Put(std::uint16_t{0});
  return list.Take();
}

std::u16string PathOfIdList(std::string_view list) {
  std::u16string path;
  while (auto size = ReadAt<std::uint16_t>(list, 0)) {
    if (*size < 3 || *size > list.size()) break;
    const std::string_view item = list.substr(0, *size);
    list.remove_prefix(*size);
    const auto type = static_cast<std::uint8_t>(item[2]);
    if ((type & 0xF0) == 0x20 && item.size() > 5) {
      path = link::AnsiAt(item, 3);
    } else if ((type & 0x70) == 0x40 && item.size() > 6) {
      path = link::AnsiAt(item, 5);
    } else if ((type & 0x70) == 0x30 && item.size() > 16 && !path.empty()) {
      if (path.back() != u'\\') path += u'\\';
      path += ItemName(item);
    }
  }
  return path;
}

}  // namespace winhost
