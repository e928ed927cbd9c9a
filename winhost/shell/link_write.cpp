#include <algorithm>

#include "winhost/shell/id_list.h"
#include "winhost/shell/link_file.h"
#include "winhost/shell/link_format.h"

namespace winhost {
namespace {

using link::Ansi;
using link::Ticks;
using link::Writer;

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
  if (IsOnDrive(from.target)) flags |= link::kHasIdList | link::kHasLinkInfo;
  for (const Text& row : texts) flags |= row.text.empty() ? 0 : row.flag;

  Writer file;
  file.Put(link::kHeaderSize).Put(std::string_view(link::kClassId, 16)).Put(flags).Put(from.attributes);
  file.Put(Ticks(from.created)).Put(Ticks(from.accessed)).Put(Ticks(from.written)).Put(from.size);
  file.Put(from.icon_index).Put(from.show_command).Put(from.hot_key).Zeros(10);
  if (flags & link::kHasIdList) {
    const std::string list = IdListOf(from);
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
