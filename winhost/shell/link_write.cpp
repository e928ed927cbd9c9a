#include <algorithm>
#include <ctime>
#include <vector>

#include "winhost/shell/link_file.h"
#include "winhost/shell/link_format.h"

namespace winhost {
namespace {

using link::Writer;

std::uint64_t Ticks(const FILETIME& time) {
  return static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
}

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

// What the format's narrow fields get; every one of them has a UTF-16 twin that holds the real text.
std::string Ansi(std::u16string_view text) {
  std::string narrow;
  for (char16_t unit : text) narrow += unit < 0x80 ? static_cast<char>(unit) : '?';
  return narrow;
}

bool OnDrive(std::u16string_view path) {
  const auto letter = path.empty() ? u'\0' : static_cast<char16_t>(path[0] | 0x20);
  return path.size() >= 3 && letter >= u'a' && letter <= u'z' && path[1] == u':' && path[2] == u'\\';
}

std::vector<std::u16string_view> Components(std::u16string_view path) {
  std::vector<std::u16string_view> parts;
  for (std::size_t start = 3; start < path.size();) {
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

std::string IdList(const LinkFile& from) {
  Writer list;
  constexpr char kThisPc[] = "\x1F\x50\xE0\x4F\xD0\x20\xEA\x3A\x69\x10\xA2\xD8\x08\x00\x2B\x30\x30\x9D";
  PutItem(list, std::string(kThisPc, sizeof kThisPc - 1));
  PutItem(list, Writer().Put(link::kDriveItem).Put(Ansi(from.target.substr(0, 3))).Zeros(19).Take());
  const auto parts = Components(from.target);
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

std::string LinkInfo(std::u16string_view target) {
  constexpr std::uint32_t kDriveFixed = 3;
  const std::string volume =
      Writer().Put(std::uint32_t{0x11}).Put(kDriveFixed).Put(std::uint32_t{0}).Put(std::uint32_t{0x10}).Zeros(1).Take();
  const std::string base = Ansi(target) + '\0';
  const auto volume_at = link::kLinkInfoHeader;
  const auto base_at = static_cast<std::uint32_t>(volume_at + volume.size());
  const auto suffix_at = static_cast<std::uint32_t>(base_at + base.size());
  const auto wide_base_at = suffix_at + 1;
  const auto wide_suffix_at = static_cast<std::uint32_t>(wide_base_at + 2 * (target.size() + 1));
  const auto total = wide_suffix_at + 2;
  Writer info;
  info.Put(total).Put(link::kLinkInfoHeader).Put(link::kVolumeAndLocalPath).Put(volume_at).Put(base_at);
  info.Put(std::uint32_t{0}).Put(suffix_at).Put(wide_base_at).Put(wide_suffix_at);
  info.Put(volume).Put(base).Zeros(1).PutWide(target).Put(std::uint16_t{0});
  return info.Take();
}

struct Text {
  std::u16string_view text;
  std::uint32_t flag;
};

}  // namespace

std::string WriteLink(const LinkFile& from) {
  const Text texts[] = {{from.description, link::kHasName},
                        {from.relative_path, link::kHasRelativePath},
                        {from.working_directory, link::kHasWorkingDir},
                        {from.arguments, link::kHasArguments},
                        {from.icon, link::kHasIcon}};
  std::uint32_t flags = link::kIsUnicode;
  if (OnDrive(from.target)) flags |= link::kHasIdList | link::kHasLinkInfo;
  for (const Text& row : texts) flags |= row.text.empty() ? 0 : row.flag;

  Writer file;
  file.Put(link::kHeaderSize).Put(std::string_view(link::kClassId, 16)).Put(flags).Put(from.attributes);
  file.Put(Ticks(from.created)).Put(Ticks(from.accessed)).Put(Ticks(from.written)).Put(from.size);
  file.Put(from.icon_index).Put(from.show_command).Put(from.hot_key).Zeros(10);
  if (flags & link::kHasIdList) {
    const std::string list = IdList(from);
    file.Put(static_cast<std::uint16_t>(list.size())).Put(list).Put(LinkInfo(from.target));
  }
  for (const Text& row : texts) {
    if (row.text.empty()) continue;
    const std::size_t count = std::min<std::size_t>(row.text.size(), 0xFFFF);
    file.Put(static_cast<std::uint16_t>(count));
    for (char16_t unit : row.text.substr(0, count)) file.Put(static_cast<std::uint16_t>(unit));
  }
  file.Zeros(4);
  return file.Take();
}

}  // namespace winhost
