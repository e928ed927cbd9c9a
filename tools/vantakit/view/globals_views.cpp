#include "tools/vantakit/view/globals_views.h"

#include "lumo/core/global_resources.h"
#include "lumo/core/markup_document.h"
#include "lumo/core/name_hash.h"
#include "tools/vantakit/view/json_text.h"

#include <functional>
#include <stdexcept>

namespace vantakit {
namespace {

using Json = nlohmann::json;

Json CodesOf(lumo::GlobalResources& tables, const lumo::String& xml) {
  lumo::MarkupDocument document;
  Json codes = Json::array();
  if (!document.LoadText(xml)) return codes;
  for (const int code : tables.AddDocument(document)) {
    codes.push_back(code == lumo::GlobalResources::kPassedOver ? Json() : Json(code));
  }
  return codes;
}

// The font as the system made it.
Json FontOf(lumo::GlobalResources& tables, const Json& query) {
  const lumo::String id = TextOf(query.at(1));
  const int scale = query.at(2).get<int>();
  LOGFONTW font = {};
  const HFONT handle = tables.GetFont(id, scale);
  if (!handle || !GetObjectW(handle, sizeof font, &font)) return nullptr;
  const lumo::String key = lumo::FontCacheKey(id.empty() ? tables.DefaultFontId() : id, scale);
  return {{"face", vanta::ToUtf8(font.lfFaceName)},
          {"height", font.lfHeight},
          {"weight", font.lfWeight},
          {"italic", font.lfItalic != 0},
          {"underline", font.lfUnderline != 0},
          {"strikeout", font.lfStrikeOut != 0},
          {"charset", font.lfCharSet},
          {"cacheKey", vanta::ToUtf8(key)},
          {"cacheHash", lumo::HashName(key)}};
}

// What a control's setter gets of these attributes, themes expanded.
Json Apply(lumo::GlobalResources& tables, const Json& attributes) {
  Json pairs = Json::array();
  const lumo::AttributeSetter set = [&](const WCHAR* name, const WCHAR* value) {
    if (lumo::StringView(name) == TEXT("theme")) {
      tables.ApplyThemes(value, set);
    } else {
      pairs.push_back({vanta::ToUtf8(name), vanta::ToUtf8(value)});
    }
  };
  for (const Json& pair : attributes) set(TextOf(pair.at(0)).c_str(), TextOf(pair.at(1)).c_str());
  return pairs;
}

Json Answer(lumo::GlobalResources& tables, const Json& query) {
  const auto kind = query.at(0).get<std::string>();
  if (kind == "font") return FontOf(tables, query);
  if (kind == "color") return tables.GetColor(TextOf(query.at(1)));
  if (kind == "theme") return vanta::ToUtf8(tables.GetThemeAttributes(TextOf(query.at(1))));
  if (kind == "default") return vanta::ToUtf8(tables.DefaultFontId());
  if (kind == "apply") return Apply(tables, query.at(1));
  throw std::runtime_error("unknown query \"" + kind + "\"");
}

}  // namespace

Json GlobalsHashView(const Json& input) { return {{"hash", lumo::HashName(TextOf(input, "text"))}}; }

Json GlobalsLoadView(const Json& input) {
  lumo::GlobalResources tables(input.at("os_major").get<DWORD>());
  const Json codes = CodesOf(tables, TextOf(input, "xml"));
  Json results = Json::array();
  for (const Json& query : input.at("queries")) results.push_back(Answer(tables, query));
  return {{"codes", codes}, {"results", results}};
}

Json GlobalsAttributeListView(const Json& input) {
  const lumo::String list = TextOf(input, "list");
  Json pairs = Json::array();
  lumo::StringView name, value;
  for (lumo::AttributeListReader reader(list); reader.Next(&name, &value);) {
    pairs.push_back({vanta::ToUtf8(name), vanta::ToUtf8(value)});
  }
  return {{"pairs", pairs}};
}

}  // namespace vantakit
