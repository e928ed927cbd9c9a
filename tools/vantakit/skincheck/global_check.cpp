#include "tools/vantakit/skincheck/global_check.h"

#include <algorithm>
#include <set>

#include "tools/vantakit/skincheck/value_check.h"

namespace vantakit {
namespace {

using lumo::StringView;
using lumo::ValueKind;

std::string Utf8(StringView text) { return vanta::ToUtf8(text); }

// "#" and eight hexadecimal digits.
bool IsColorValue(StringView value) {
  return value.size() == 9 && value[0] == '#' &&
         value.substr(1).find_first_not_of(TEXT("0123456789abcdefABCDEF")) == value.npos;
}

class GlobalCheck {
 public:
  GlobalCheck(MarkupSource& source, Catalogue& catalogue, SkinTheme& theme, Findings& findings)
      : source_(source), document_(source.Document()), catalogue_(catalogue), theme_(theme), findings_(findings) {}

  void Run() {
    FindMarkupFaults(source_, &findings_);
    document_.Rewind();
    while (document_.NextChild()) {
      document_.EnterChild();
      TakeElement();
      document_.LeaveElement();
    }
    CheckThemeValues();
  }

 private:
  void Say(int line, std::string message) { findings_.push_back(source_.At(line, std::move(message))); }

  void TakeElement() {
    const StringView tag = document_.TagName();
    const int line = source_.LineOf(tag);
    if (tag == TEXT("Theme")) return TakeTheme(line);
    const lumo::AttributeInfos known = GlobalAttributes(tag);
    if (known.empty()) return Say(line, "<" + Utf8(tag) + "> is none of Font, Color and Theme, so it is passed over");
    const bool font = tag == TEXT("Font");
    lumo::String identity, content;
    ForEachAttribute([&](StringView name, StringView value, int at) {
      const std::optional<ValueKind> kind = FindKind(known, name);
      if (!kind) return Say(at, "<" + Utf8(tag) + "> has no attribute \"" + Utf8(name) + "\"");
      if (name == known[0].name) identity = value;
      if (name == known[1].name) content = value;
      for (const Remark& remark : CheckValue(theme_, {}, *kind, value))
        Say(at, Quote(name, value) + ": " + remark.message);
    });
    if (identity.empty() || content.empty()) {
      return Say(line, "<" + Utf8(tag) + "> needs \"" + Utf8(known[0].name) + "\" and \"" + Utf8(known[1].name) + "\"");
    }
    if (!font && !IsColorValue(content))
      Say(line, Quote(TEXT("value"), content) + ": not \"#\" and eight hexadecimal digits");
    Define(font ? theme_.fonts : theme_.colors, identity, line);
  }

  void TakeTheme(int line) {
    ThemeDefinition theme;
    theme.line = line;
    lumo::String identity;
    ForEachAttribute([&](StringView name, StringView value, int at) {
      if (name == TEXT("name")) {
        identity = value;
      } else {
        theme.attributes.push_back({lumo::String(name), lumo::String(value), at});
      }
    });
    if (identity.empty()) return Say(line, "<Theme> needs \"name\"");
    if (Define(theme_.themes, identity, line)) theme_.themes[identity] = theme;
  }

  // The first definition of a name stays.
  template <class Map>
  bool Define(Map& definitions, const lumo::String& name, int line) {
    const auto [row, fresh] = definitions.try_emplace(name);
    if (!fresh) {
      Say(line,
          "\"" + Utf8(name) + "\" is defined in line " + std::to_string(row->second.line) + " already, which counts");
      return false;
    }
    row->second.line = line;
    return true;
  }

  template <class Act>
  void ForEachAttribute(Act act) {
    std::set<lumo::String> seen;
    StringView name, value;
    for (std::size_t n = 0; document_.AttributeAt(n, &name, &value); ++n) {
      const int line = source_.LineOf(name);
      if (!seen.insert(lumo::String(name)).second) Say(line, "\"" + Utf8(name) + "\" is given twice");
      act(name, value, line);
    }
  }

  // Once all names are known: colours may stand below the themes that use them.
  void CheckThemeValues() {
    for (auto& [name, theme] : theme_.themes) {
      for (const ThemeAttribute& attribute : theme.attributes) CheckThemeValue(attribute);
    }
  }

  void CheckThemeValue(const ThemeAttribute& attribute) {
    const std::optional<ValueKind> kind = catalogue_.AnyKindOf(attribute.name);
    if (!kind) {
      const StringView near = catalogue_.AttributeNear({}, attribute.name);
      return Say(attribute.line, "no control has an attribute \"" + Utf8(attribute.name) + "\"" +
                                     (near.empty() ? "" : "; \"" + Utf8(near) + "\"?"));
    }
    const std::string shown = Quote(attribute.name, attribute.value) + ": ";
    if (attribute.value.find('"') != attribute.value.npos)
      Say(attribute.line, shown + "a theme's value ends at a double quote");
    if (NamesPicture(*kind)) return;
    for (const Remark& remark : CheckValue(theme_, {}, *kind, attribute.value)) {
      findings_.push_back(source_.At(attribute.line, shown + remark.message, remark.severity));
    }
  }

  MarkupSource& source_;
  lumo::MarkupDocument& document_;
  Catalogue& catalogue_;
  SkinTheme& theme_;
  Findings& findings_;
};

}  // namespace

lumo::AttributeInfos GlobalAttributes(StringView tag) {
  if (tag == TEXT("Font")) {
    return {{TEXT("id"), ValueKind::Text},           {TEXT("name"), ValueKind::Text},
            {TEXT("size"), ValueKind::Integer},      {TEXT("bold"), ValueKind::Boolean},
            {TEXT("underline"), ValueKind::Boolean}, {TEXT("strikeout"), ValueKind::Boolean},
            {TEXT("italic"), ValueKind::Boolean},    {TEXT("default"), ValueKind::Boolean}};
  }
  if (tag == TEXT("Color")) return {{TEXT("name"), ValueKind::Text}, {TEXT("value"), ValueKind::Text}};
  return {};
}

void CheckGlobals(MarkupSource& source, Catalogue& catalogue, SkinTheme* theme, Findings* findings) {
  GlobalCheck(source, catalogue, *theme, *findings).Run();
}

}  // namespace vantakit
