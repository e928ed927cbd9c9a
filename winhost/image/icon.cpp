#include "winhost/image/icon.h"

namespace winhost {

bool AddIcon(ResourceTree& tree, Bytes ico, std::uint16_t group, std::uint16_t first_picture, std::string* why) {
  constexpr std::size_t kHeader = 6;
  constexpr std::size_t kEntry = 16;  // in the file; 14 in the resource, where a number takes the offset's place
  const auto count = FieldOr0<std::uint16_t>(ico, 4);
  if (FieldOr0<std::uint32_t>(ico, 0) != 0x00010000u || count == 0 || count > 64) {
    *why = "not an icon file";
    return false;
  }
  std::vector<std::byte> list(ico.begin(), ico.begin() + kHeader);
  ResourceTree pictures;
  for (std::uint16_t i = 0; i < count; ++i) {
    const auto entry = Part(ico, kHeader + kEntry * i, kEntry);
    const auto picture =
        entry ? Part(ico, FieldOr0<std::uint32_t>(*entry, 12), FieldOr0<std::uint32_t>(*entry, 8)) : std::nullopt;
    if (!picture || picture->empty()) {
      *why = "picture " + std::to_string(i + 1) + " lies outside the icon file";
      return false;
    }
    const auto number = static_cast<std::uint16_t>(first_picture + i);
    list.insert(list.end(), entry->begin(), entry->begin() + 12);
    AppendField(list, number);
    SetResource(pictures, kTypeIcon, number, 0, ResourceBlob({picture->begin(), picture->end()}));
  }
  for (auto& [key, blob] : pictures) SetResource(tree, key.type, key.name, key.language, blob);
  SetResource(tree, kTypeGroupIcon, group, 0, ResourceBlob(std::move(list)));
  return true;
}

}  // namespace winhost
