#include "tools/vantakit/skincheck/catalogue.h"

#include <algorithm>
#include <numeric>

#include "lumo/controls/attribute_lists.h"
#include "lumo/controls/control_base.h"
#include "lumo/core/builder.h"
#include "lumo/core/window_attributes.h"

namespace vantakit {
namespace {

using lumo::StringView;

std::size_t EditDistance(StringView a, StringView b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i + 1;
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t changed = diagonal + (a[i] != b[j]);
      diagonal = row[j + 1];
      row[j + 1] = std::min({row[j] + 1, row[j + 1] + 1, changed});
    }
  }
  return row.back();
}

}  // namespace

std::optional<lumo::ValueKind> FindKind(const lumo::AttributeInfos& infos, StringView name) {
  const auto found = std::ranges::find(infos, name, &lumo::AttributeInfo::name);
  return found == infos.end() ? std::nullopt : std::optional(found->kind);
}

StringView NearestOf(const std::vector<StringView>& words, StringView word) {
  constexpr std::size_t kFewLetters = 4, kLongest = 64;
  if (word.size() > kLongest) return {};
  StringView best;
  std::size_t distance = word.size() > kFewLetters ? 3 : 2;  // what a slip stays below
  for (const StringView each : words) {
    const std::size_t to_each = vanta::EqualAsciiNoCase(each, word) ? 0 : EditDistance(each, word);
    if (to_each >= distance) continue;
    distance = to_each;
    best = each;
  }
  return best;
}

Catalogue::Catalogue() : attributes_(lumo::ControlAttributes()) { lumo::ListWindowAttributes(&window_attributes_); }
Catalogue::~Catalogue() = default;

bool Catalogue::HasTag(StringView tag) const {
  return std::ranges::any_of(lumo::ControlTags(), [&](const lumo::ControlTag& row) { return row.tag == tag; });
}

lumo::ControlBase* Catalogue::Sample(StringView tag) {
  auto found = samples_.find(tag);
  if (found == samples_.end()) {
    found = samples_.emplace(tag, std::unique_ptr<lumo::ControlBase>(lumo::CreateControl(tag))).first;
  }
  return found->second.get();
}

bool Catalogue::IsContainer(StringView tag) {
  lumo::ControlBase* const sample = Sample(tag);
  return sample && sample->AsBox();
}

// A control that is in no window takes the empty value, and says whether it knows the name.
std::optional<lumo::ValueKind> Catalogue::KindOf(StringView tag, StringView attribute) {
  lumo::ControlBase* const sample = Sample(tag);
  if (!sample || !sample->SetAttribute(lumo::String(attribute).c_str(), TEXT(""))) return std::nullopt;
  return AnyKindOf(attribute).value_or(lumo::ValueKind::Text);
}

std::optional<lumo::ValueKind> Catalogue::WindowKindOf(StringView attribute) const {
  return FindKind(window_attributes_, attribute);
}

std::optional<lumo::ValueKind> Catalogue::AnyKindOf(StringView attribute) const {
  return FindKind(attributes_, attribute);
}

StringView Catalogue::TagNear(StringView word) const {
  std::vector<StringView> tags;
  for (const lumo::ControlTag& row : lumo::ControlTags()) tags.push_back(row.tag);
  return NearestOf(tags, word);
}

StringView Catalogue::AttributeNear(StringView tag, StringView word) {
  const bool of_window = tag == TEXT("Window");
  std::vector<StringView> names;
  for (const lumo::AttributeInfo& info : of_window ? window_attributes_ : attributes_) {
    if (of_window || tag.empty() || KindOf(tag, info.name)) names.push_back(info.name);
  }
  return NearestOf(names, word);
}

}  // namespace vantakit
