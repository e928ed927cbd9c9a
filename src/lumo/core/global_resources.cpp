#include "lumo/core/global_resources.h"

#include "base/format.h"
#include "base/lock.h"
#include "lumo/core/load_markup.h"
#include "lumo/core/markup_document.h"
#include "lumo/core/name_hash.h"
#include "lumo/core/result.h"
#include "lumo/core/system_version.h"
#include "lumo/core/value_readers.h"

#include <limits.h>

#include <algorithm>
#include <optional>

namespace lumo {
namespace {

constexpr const WCHAR* kSystemFace = TEXT("system");
constexpr const WCHAR* kVistaFace = TEXT("微软雅黑");
constexpr const WCHAR* kOlderFace = TEXT("新宋体");
constexpr DWORD kVista = 6;
constexpr LONG kBoldBy = 700;  // added to the stock font's weight
constexpr int kMostLists = 1024;

struct ProcessGlobals : GlobalResources {
  ProcessGlobals() : GlobalResources(SystemMajorVersion()) {}
};
constinit vanta::Lazy<ProcessGlobals> process_globals;

// Attributes of one element by name; the first of a name counts.
class Attributes {
 public:
  explicit Attributes(MarkupDocument& element) : element_(element) {}

  std::optional<String> Find(StringView wanted) const {
    StringView name, value;
    for (size_t n = 0; element_.AttributeAt(n, &name, &value); ++n) {
      if (name == wanted) return String(value);
    }
    return std::nullopt;
  }
  int Number(StringView wanted) const { return ReadInteger(Find(wanted).value_or(String())); }
  bool Flag(StringView wanted) const { return Number(wanted) != 0; }

 private:
  MarkupDocument& element_;
};

const WCHAR* OrNull(const std::optional<String>& text) { return text ? text->c_str() : nullptr; }

bool IsMissing(const WCHAR* text) { return !text || !*text; }

StringView TrimLeft(StringView text) {
  while (!text.empty() && text.front() <= ' ') text.remove_prefix(1);
  return text;
}

// The cache key of a font without its text.
DWORD FontCacheHash(StringView id, int scale) {
  return HashName(vanta::Format(TEXT("%d"), scale), HashName(TEXT("_factor_"), HashName(id)));
}

}  // namespace

String FontCacheKey(StringView id, int scale) { return vanta::Format(TEXT("%s_factor_%d"), id, scale); }

int GlobalResources::AddFont(const WCHAR* id, const WCHAR* name, int size, bool bold, bool underline, bool strikeout,
                             bool italic, bool is_default) {
  if (IsMissing(id) || IsMissing(name)) return LumoMissingArgument;
  const auto [place, added] = fonts_.try_emplace(HashName(id));
  if (!added) return LumoDuplicate;
  const bool system = vanta::EqualNoCase(name, kSystemFace);
  place->second = {
      system ? (os_major_ >= kVista ? kVistaFace : kOlderFace) : name, size, bold, underline, strikeout, italic};
  if (is_default) default_font_ = id;
  return LumoOk;
}

int GlobalResources::AddColor(const WCHAR* name, const WCHAR* value) {
  if (!name || !value) return LumoMissingArgument;
  const StringView digits = *value ? StringView(value).substr(1) : StringView();
  return colors_.try_emplace(HashName(name), ReadHexadecimal(digits)).second ? LumoOk : LumoDuplicate;
}

int GlobalResources::AddTheme(MarkupDocument& element) {
  const std::optional<String> theme = Attributes(element).Find(TEXT("name"));
  if (!theme || theme->empty()) return LumoMissingArgument;
  const DWORD hash = HashName(*theme);
  if (themes_.count(hash)) return LumoDuplicate;
  String list;
  StringView name, value;
  for (size_t n = 0; element.AttributeAt(n, &name, &value); ++n) {
    if (name != TEXT("name")) list += vanta::Format(TEXT(" %s=\"%s\""), name, value);
  }
  themes_[hash] = TrimLeft(list);
  return LumoOk;
}

int GlobalResources::AddElement(MarkupDocument& element) {
  const StringView tag = element.TagName();
  const Attributes of(element);
  if (tag == TEXT("Font")) {
    return AddFont(OrNull(of.Find(TEXT("id"))), OrNull(of.Find(TEXT("name"))), of.Number(TEXT("size")),
                   of.Flag(TEXT("bold")), of.Flag(TEXT("underline")), of.Flag(TEXT("strikeout")),
                   of.Flag(TEXT("italic")), of.Flag(TEXT("default")));
  }
  if (tag == TEXT("Color")) return AddColor(OrNull(of.Find(TEXT("name"))), OrNull(of.Find(TEXT("value"))));
  return tag == TEXT("Theme") ? AddTheme(element) : kPassedOver;
}

std::vector<int> GlobalResources::AddDocument(MarkupDocument& document) {
  std::vector<int> codes;
  document.Rewind();
  while (document.NextChild()) {
    document.EnterChild();
    codes.push_back(AddElement(document));
    document.LeaveElement();
  }
  return codes;
}

DWORD GlobalResources::GetColor(StringView name) const {
  const auto found = colors_.find(HashName(name));
  return found == colors_.end() ? 0 : found->second;
}

const String& GlobalResources::GetThemeAttributes(StringView name) const {
  const auto found = themes_.find(HashName(name));
  return found == themes_.end() ? no_theme_ : found->second;
}

void GlobalResources::ApplyThemes(StringView names, const AttributeSetter& set) {
  while (!names.empty()) {
    const size_t end = std::min(names.find(' '), names.size());
    const StringView name = names.substr(0, end);
    names.remove_prefix(std::min(end + 1, names.size()));
    if (name.empty() || !EnterTheme(HashName(name))) continue;
    ApplyAttributeList(GetThemeAttributes(name), set);
    LeaveTheme();
  }
}

bool GlobalResources::EnterTheme(DWORD hash) {
  std::vector<DWORD>& entered = themes_being_applied_;
  if (entered.empty()) lists_applied_ = 0;
  if (std::find(entered.begin(), entered.end(), hash) != entered.end() || lists_applied_ >= kMostLists) return false;
  ++lists_applied_;
  entered.push_back(hash);
  return true;
}

void GlobalResources::LeaveTheme() { themes_being_applied_.pop_back(); }

bool GlobalResources::DescribeFont(StringView id, int scale, LOGFONTW* font) const {
  const auto found = fonts_.find(HashName(id.empty() ? StringView(default_font_) : id));
  if (found == fonts_.end()) return false;
  const FontDefinition& definition = found->second;
  *font = {};
  GetObjectW(GetStockObject(DEFAULT_GUI_FONT), sizeof *font, font);
  lstrcpynW(font->lfFaceName, definition.face.c_str(), LF_FACESIZE);
  font->lfCharSet = DEFAULT_CHARSET;
  const int size = scale == 100 ? definition.size : MulDiv(definition.size, scale, 100);
  font->lfHeight = -std::max(size, -INT_MAX);  // a character height
  if (definition.bold) font->lfWeight += kBoldBy;
  font->lfItalic = definition.italic;
  font->lfUnderline = definition.underline;
  font->lfStrikeOut = definition.strikeout;
  return true;
}

HFONT GlobalResources::GetFont(StringView id, int scale) {
  if (id.empty()) id = default_font_;
  const DWORD hash = FontCacheHash(id, scale);
  if (const auto found = handles_.find(hash); found != handles_.end()) return found->second.Get();
  LOGFONTW description;
  if (!DescribeFont(id, scale, &description)) return nullptr;
  UniqueFont font(CreateFontIndirectW(&description));
  if (!font) return nullptr;
  return handles_.emplace(hash, std::move(font)).first->second.Get();
}

void GlobalResources::ReleaseFonts() {
  handles_.clear();
  fonts_.clear();
  default_font_.clear();
}

void GlobalResources::Clear() {
  ReleaseFonts();
  colors_.clear();
  themes_.clear();
}

int LoadGlobalResources() {
  MarkupDocument document;
  const int loaded = LoadMarkup(TEXT("global.xml"), &document);
  if (loaded == LumoOk) Globals().AddDocument(document);
  return loaded;
}

GlobalResources& Globals() { return process_globals.Get(); }
HFONT GetFont(StringView id, int scale) { return Globals().GetFont(id, scale); }
DWORD GetColor(StringView name) { return Globals().GetColor(name); }
const String& GetThemeAttributes(StringView name) { return Globals().GetThemeAttributes(name); }
void ReleaseFonts() { Globals().ReleaseFonts(); }

}  // namespace lumo
