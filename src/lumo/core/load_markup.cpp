#include "lumo/core/load_markup.h"

#include "lumo/core/markup_document.h"
#include "lumo/core/resource_source.h"
#include "lumo/core/result.h"

#include <shlwapi.h>

#include <algorithm>
#include <optional>

namespace lumo {
namespace {

std::optional<String> ReadPackaged(const String& path) {
  const ResourceSource& resources = Resources();
  std::vector<BYTE> bytes;
  if (!resources.IsPackaged() || !resources.Read(path, &bytes)) return std::nullopt;
  const auto end = std::find(bytes.begin(), bytes.end(), BYTE{0});
  const auto length = static_cast<size_t>(end - bytes.begin());
  return vanta::FromUtf8({reinterpret_cast<const char*>(bytes.data()), length});
}

bool LoadFromPath(const WCHAR* path, MarkupDocument* document) {
  const String below_theme = Resources().ThemeFolder() + path;
  if (std::optional<String> text = ReadPackaged(below_theme)) return document->LoadText(std::move(*text));
  return document->LoadFile(PathIsRelativeW(path) ? below_theme : String(path));
}

}  // namespace

int LoadMarkup(const WCHAR* source, MarkupDocument* document) {
  if (!source) return LumoMissingArgument;
  const bool loaded = *source == '<' ? document->LoadText(source) : LoadFromPath(source, document);
  return loaded ? LumoOk : LumoParseFailure;
}

}  // namespace lumo
