#include "tools/vantakit/skincheck/value_check.h"

#include <algorithm>

#include "lumo/controls/attribute_lists.h"
#include "lumo/controls/color_spec.h"
#include "lumo/core/pair_list.h"
#include "lumo/render/image_attribute.h"
#include "tools/vantakit/skincheck/catalogue.h"
#include "tools/vantakit/skincheck/number_check.h"
#include "tools/vantakit/skincheck/picture_check.h"

namespace vantakit {
namespace {

using lumo::StringView;
using lumo::ValueKind;

std::string Utf8(StringView text) { return vanta::ToUtf8(text); }

std::vector<StringView> Pieces(StringView text, StringView separators) {
  std::vector<StringView> pieces;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of(separators), text.size());
    if (end) pieces.push_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return pieces;
}

std::string Listed(const std::vector<StringView>& words) {
  std::string list;
  for (const StringView word : words) list += (list.empty() ? "" : ", ") + Utf8(word);
  return list;
}

// A list of key='value' pairs, as colours and pictures are written; a value without any is a name.
bool HasPairs(StringView value) {
  lumo::PairReader pairs(value);
  StringView key, part;
  return pairs.Next(&key, &part) || value.find(TEXT("='")) != value.npos;
}

class Checker {
 public:
  Checker(SkinTheme& theme, StringView window_folder) : theme_(theme), folder_(window_folder) {}

  void Check(ValueKind kind, StringView value) {
    if (const std::string why = WhyNoNumber(kind, value); !why.empty()) return CheckNumber(kind, value, why);
    switch (kind) {
      case ValueKind::StringKey:
        return Named(theme_.keys, value, "in the string table");
      case ValueKind::FontId:
        return Named(theme_.fonts, value, "among the fonts");
      case ValueKind::ColorName:
        return Named(theme_.colors, value, "among the colours");
      case ValueKind::Themes:
        for (const StringView name : Pieces(value, TEXT(" "))) Named(theme_.themes, name, "among the themes");
        return;
      case ValueKind::Color:
        return CheckColor(value);
      case ValueKind::Image:
        return CheckImage(value);
      case ValueKind::PictureFile:
        return CheckPictureFile(value, {});
      case ValueKind::LayoutFile:
        if (!value.empty() && !theme_.FindEntry(theme_.ThemeFolder() + lumo::String(value)))
          Say("no layout \"" + Utf8(value) + "\" in the theme");
        return;
      case ValueKind::AlignWords:
        for (const StringView word : Pieces(value, TEXT(" ,|;"))) CheckWord(kind, word);
        return;
      case ValueKind::HAlign:
      case ValueKind::VAlign:
      case ValueKind::Cursor:
        return CheckWord(kind, value);
      case ValueKind::Presence:
        if (value == TEXT("0") || vanta::EqualAsciiNoCase(value, TEXT("false"))) Say("counts whatever its value is");
        return;
      default:
        return;
    }
  }

  Remarks Take() { return std::move(remarks_); }

 private:
  void Say(std::string message, Finding::Severity severity = Finding::Error) {
    remarks_.push_back({std::move(message), severity});
  }

  // Several numbers where one is wanted are a habit of skin writers, and the first counts.
  void CheckNumber(ValueKind kind, StringView value, const std::string& why) {
    const std::vector<StringView> numbers = Pieces(value, TEXT(","));
    const bool list = kind == ValueKind::Integer && numbers.size() > 1 &&
                      std::ranges::all_of(numbers, [&](StringView each) { return WhyNoNumber(kind, each).empty(); });
    if (list) {
      Say("only the first number counts", Finding::Warning);
    } else {
      Say(why);
    }
  }

  template <class Map>
  void Named(Map& definitions, StringView name, const char* where) {
    if (!name.empty() && !Use(definitions, name)) Say("no \"" + Utf8(name) + "\" " + where);
  }

  void CheckWord(ValueKind kind, StringView word) {
    const std::vector<StringView> words = lumo::WordsOf(kind);
    if (std::ranges::find(words, word) == words.end())
      Say("\"" + Utf8(word) + "\" is none of the words " + Listed(words));
  }

  // The pairs of a value against the keys that it may have, and whether it was read to its end.
  void CheckPairs(StringView value, const lumo::AttributeInfos& keys) {
    lumo::PairReader pairs(value);
    StringView key, part;
    while (pairs.Next(&key, &part)) {
      const std::optional<ValueKind> kind = FindKind(keys, key);
      if (!kind) {
        Say("unknown key \"" + Utf8(key) + "\"");
      } else if (*kind != ValueKind::PictureFile) {
        Check(*kind, part);
      }
    }
    if (!pairs.Rest().empty()) Say("not read from \"" + Utf8(pairs.Rest()) + "\" on");
  }

  void CheckColor(StringView value) {
    if (!HasPairs(value)) return Named(theme_.colors, value, "among the colours");
    lumo::AttributeInfos keys;
    lumo::ColorSpec::ListKeys(&keys);
    CheckPairs(value, keys);
    lumo::ColorSpec spec;
    spec.Assign(value);
    if (spec.color1.empty() != spec.color2.empty()) Say("a gradient has both color1 and color2");
    if (!spec.IsGradient() && spec.color == spec.text) Say("names no colour");
  }

  void CheckImage(StringView value) {
    if (value.empty()) return;
    lumo::ImageAttribute image;
    image.Assign(value);
    if (HasPairs(value)) {
      lumo::AttributeInfos keys;
      lumo::ImageAttribute::ListKeys(&keys);
      CheckPairs(value, keys);
      if (image.file == image.text) return Say("names no file");
    }
    CheckPictureFile(image.file, image.scale);
  }

  void CheckPictureFile(StringView file, StringView scale) {
    if (file.empty()) return;
    for (Remark& remark : CheckPicture(theme_, folder_, file, scale)) remarks_.push_back(std::move(remark));
  }

  SkinTheme& theme_;
  StringView folder_;
  Remarks remarks_;
};

}  // namespace

Remarks CheckValue(SkinTheme& theme, StringView window_folder, ValueKind kind, StringView value) {
  Checker checker(theme, window_folder);
  checker.Check(kind, value);
  return checker.Take();
}

bool NamesPicture(ValueKind kind) { return kind == ValueKind::Image || kind == ValueKind::PictureFile; }

std::string Quote(StringView name, StringView value) {
  constexpr std::size_t kLongest = 60;
  const bool cut = value.size() > kLongest;
  return Utf8(name) + "=\"" + Utf8(value.substr(0, kLongest)) + (cut ? "…\"" : "\"");
}

}  // namespace vantakit
