#include "winhost/shell/id_list.h"
#include "winhost/shell/link_file.h"
#include "winhost/shell/link_format.h"

namespace winhost {
namespace {

using link::ReadAt;

// Cuts a block of `size` bytes off the front; false where there is not so much.
bool Eat(std::string_view& rest, std::size_t size, std::string_view* block) {
  if (size > rest.size()) return false;
  *block = rest.substr(0, size);
  rest.remove_prefix(size);
  return true;
}

std::u16string PathOfLinkInfo(std::string_view info) {
  const auto header = ReadAt<std::uint32_t>(info, 4);
  const auto flags = ReadAt<std::uint32_t>(info, 8);
  if (!header || !flags || !(*flags & link::kVolumeAndLocalPath)) return {};
  if (*header >= link::kLinkInfoHeader) {
    const auto base = ReadAt<std::uint32_t>(info, 28);
    const auto suffix = ReadAt<std::uint32_t>(info, 32);
    if (base && suffix) return link::WideAt(info, *base) + link::WideAt(info, *suffix);
  }
  const auto base = ReadAt<std::uint32_t>(info, 16);
  const auto suffix = ReadAt<std::uint32_t>(info, 24);
  if (!base || !suffix) return {};
  return link::AnsiAt(info, *base) + link::AnsiAt(info, *suffix);
}

std::u16string PathOfExtraData(std::string_view rest) {
  constexpr std::size_t kWideTarget = 8 + 260;
  while (auto size = ReadAt<std::uint32_t>(rest, 0)) {
    std::string_view block;
    if (*size < 8 || !Eat(rest, *size, &block)) break;
    if (ReadAt<std::uint32_t>(block, 4) == link::kEnvironmentBlock) return link::WideAt(block, kWideTarget);
  }
  return {};
}

bool EatText(std::string_view& rest, bool unicode, std::u16string* text) {
  const auto count = ReadAt<std::uint16_t>(rest, 0);
  std::string_view block;
  if (!count) return false;
  rest.remove_prefix(2);
  if (!Eat(rest, *count * (unicode ? 2u : 1u), &block)) return false;
  text->clear();
  for (std::size_t i = 0; i < *count; ++i) {
    *text +=
        unicode ? static_cast<char16_t>(*ReadAt<std::uint16_t>(block, 2 * i)) : static_cast<unsigned char>(block[i]);
  }
  return true;
}

void ReadHeader(std::string_view bytes, LinkFile* into) {
  into->attributes = *ReadAt<std::uint32_t>(bytes, 24);
  into->created = *ReadAt<FILETIME>(bytes, 28);
  into->accessed = *ReadAt<FILETIME>(bytes, 36);
  into->written = *ReadAt<FILETIME>(bytes, 44);
  into->size = *ReadAt<std::uint32_t>(bytes, 52);
  into->icon_index = *ReadAt<std::int32_t>(bytes, 56);
  into->show_command = *ReadAt<std::uint32_t>(bytes, 60);
  into->hot_key = *ReadAt<std::uint16_t>(bytes, 64);
}

}  // namespace

std::optional<LinkFile> ReadLink(std::string_view bytes) {
  std::string_view rest = bytes, header, list, info;
  if (!Eat(rest, link::kHeaderSize, &header)) return std::nullopt;
  if (ReadAt<std::uint32_t>(header, 0) != link::kHeaderSize) return std::nullopt;
  if (header.substr(4, 16) != std::string_view(link::kClassId, 16)) return std::nullopt;
  LinkFile read;
  ReadHeader(header, &read);
  const std::uint32_t flags = *ReadAt<std::uint32_t>(header, 20);

  if (flags & link::kHasIdList) {
    const auto size = ReadAt<std::uint16_t>(rest, 0);
    if (!size || !Eat(rest, 2u + *size, &list)) return std::nullopt;
    list.remove_prefix(2);
  }
  if (flags & link::kHasLinkInfo) {
    const auto size = ReadAt<std::uint32_t>(rest, 0);
    if (!size || *size < 4 || !Eat(rest, *size, &info)) return std::nullopt;
  }
  const std::pair<std::uint32_t, std::u16string*> texts[] = {{link::kHasName, &read.description},
                                                             {link::kHasRelativePath, &read.relative_path},
                                                             {link::kHasWorkingDir, &read.working_directory},
                                                             {link::kHasArguments, &read.arguments},
                                                             {link::kHasIcon, &read.icon}};
  for (const auto& [flag, text] : texts) {
    if ((flags & flag) && !EatText(rest, (flags & link::kIsUnicode) != 0, text)) return std::nullopt;
  }
  if (!(flags & link::kForceNoLinkInfo)) read.target = PathOfLinkInfo(info);
  if (read.target.empty()) read.target = PathOfIdList(list);
  if (read.target.empty()) read.target = PathOfExtraData(rest);
  return read;
}

}  // namespace winhost
