#include "tools/vantakit/view/skin_views.h"

#include "setupui/skin_package.h"
#include "setupui/skin_path.h"
#include "setupui/string_table.h"
#include "tools/vantakit/view/json_text.h"

namespace vantakit {

using Json = nlohmann::json;

Json SkinNormaliseView(const Json& input) {
  const auto path = vanta::NormaliseSkinPath(TextOf(input, "path"));
  return {{"found", path.has_value()}, {"path", vanta::ToUtf8(path.value_or(vanta::String()))}};
}

Json SkinLookupView(const Json& input) {
  const auto entries = input.at("entries").get<std::vector<std::string>>();
  vanta::ZipIndex index;
  LONG number = 0;
  for (const std::string& entry : entries) index.Add(entry, {number++, 0});
  const vanta::ZipPlace* const found = vanta::FindSkinEntry(index, TextOf(input, "path"));
  return {{"entry", found ? Json(entries[static_cast<size_t>(found->index)]) : Json()}};
}

Json SkinTableView(const Json& input) {
  const vanta::StringTable table = vanta::ParseStringTable(input.at("utf8").get_ref<const std::string&>());
  vanta::StringTable strings;
  for (const auto& [key, value] : table) strings[key] = vanta::ExpandEscapes(value);
  return {{"table", ObjectOf(table)}, {"strings", ObjectOf(strings)}};
}

}  // namespace vantakit
