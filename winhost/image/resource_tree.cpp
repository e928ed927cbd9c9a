#include "winhost/image/resource_tree.h"

#include <tuple>

#include "winhost/machine/text.h"

namespace winhost {
namespace {

constexpr std::uint16_t kNeutral = 0;
constexpr std::uint16_t kAmericanEnglish = 0x0409;

}  // namespace

ResourceName::ResourceName(std::u16string_view text) : text_(Upcase(text)) {}

std::u16string ResourceName::Display() const { return IsText() ? text_ : u"#" + Wide(std::to_string(id_)); }

bool ResourceName::operator<(const ResourceName& other) const {
  if (IsText() != other.IsText()) return IsText();
  return IsText() ? text_ < other.text_ : id_ < other.id_;
}

bool ResourceKey::operator<(const ResourceKey& other) const {
  return std::tie(type, name, language) < std::tie(other.type, other.name, other.language);
}

void SetResource(ResourceTree& tree, const ResourceName& type, const ResourceName& name, std::uint16_t language,
                 ResourceBlob blob) {
  std::erase_if(tree, [&](const auto& row) { return row.first.type == type && row.first.name == name; });
  tree.emplace(ResourceKey{type, name, language}, std::move(blob));
}

const ResourceBlob* FindInTree(const ResourceTree& tree, const ResourceName& type, const ResourceName& name) {
  for (const std::uint16_t language : {kNeutral, kAmericanEnglish}) {
    if (const auto found = tree.find({type, name, language}); found != tree.end()) return &found->second;
  }
  const auto first = tree.lower_bound({type, name, 0});
  if (first == tree.end() || !(first->first.type == type) || !(first->first.name == name)) return nullptr;
  return &first->second;
}

}  // namespace winhost
