// The named fonts, colours and attribute bundles ("themes") of the skin's global.xml.
//
// Every table is keyed by the hash of the name (name_hash.h); the name itself is not kept, and the first definition of
// a name stays. UI thread only.
#pragma once

#include "base/unique.h"
#include "lumo/core/attribute_list.h"
#include "lumo/core/types.h"

#include <map>
#include <vector>

namespace lumo {

class MarkupDocument;

using UniqueFont = vanta::Unique<HFONT, &DeleteObject>;

struct FontDefinition {
  String face;
  int size = 0;  // design pixels
  bool bold = false;
  bool underline = false;
  bool strikeout = false;
  bool italic = false;
};

// One set of tables. The process's own is behind the functions below; tools make others.
class GlobalResources {
 public:
  // `os_major` is the Windows version's first number: it decides what the face "system" stands for.
  explicit GlobalResources(DWORD os_major) : os_major_(os_major) {}

  // Each answers LumoOk, LumoMissingArgument (a null; for fonts an empty text too) or LumoDuplicate, and changes
  // nothing unless LumoOk.
  int AddFont(const WCHAR* id, const WCHAR* name, int size, bool bold, bool underline, bool strikeout, bool italic,
              bool is_default);
  // The value's first character is passed over, whatever it is; hexadecimal digits, alpha first, follow it.
  int AddColor(const WCHAR* name, const WCHAR* value);
  // The element at the document's main position: its "name", and all its other attributes.
  int AddTheme(MarkupDocument& element);

  static constexpr int kPassedOver = -1;
  // A Font, Color or Theme element by its attributes; kPassedOver for an element of another name.
  int AddElement(MarkupDocument& element);
  // Every child of the top-level element, in order; what AddElement says of each.
  std::vector<int> AddDocument(MarkupDocument& document);

  // ARGB; 0 (transparent) for a name that is not defined.
  DWORD GetColor(StringView name) const;
  // name="value" pairs in document order (attribute_list.h); "" for a name that is not defined.
  const String& GetThemeAttributes(StringView name) const;
  // See ApplyThemes of attribute_list.h.
  void ApplyThemes(StringView names, const AttributeSetter& set);

  // The font at a scale (100 = 96 dpi); an empty id is the default font. Made on first use, kept and owned here. Null
  // for an id that is not defined, and when the system makes none (which is tried again the next time).
  HFONT GetFont(StringView id, int scale);
  // What GetFont asks the system for; false for an id that is not defined.
  bool DescribeFont(StringView id, int scale, LOGFONTW* font) const;
  const String& DefaultFontId() const { return default_font_; }

  // Deletes every font and forgets the font definitions and the default.
  void ReleaseFonts();
  // Forgets everything, so that another skin can be loaded. Fonts are deleted: nothing may be drawn with them any more.
  void Clear();

 private:
  bool EnterTheme(DWORD hash);
  void LeaveTheme();

  DWORD os_major_;
  std::map<DWORD, FontDefinition> fonts_;
  std::map<DWORD, UniqueFont> handles_;
  std::map<DWORD, DWORD> colors_;
  std::map<DWORD, String> themes_;
  String default_font_;
  String no_theme_;
  std::vector<DWORD> themes_being_applied_;
  int lists_applied_ = 0;  // since the outermost ApplyThemes began
};

// "<id>_factor_<scale>": the text whose hash is a font's key in the cache.
String FontCacheKey(StringView id, int scale);

// Loads "global.xml" of the theme folder into the process's tables. LumoOk, or the loader's code, and then nothing was
// added.
int LoadGlobalResources();

// The process's tables.
GlobalResources& Globals();
HFONT GetFont(StringView id, int scale);
DWORD GetColor(StringView name);
const String& GetThemeAttributes(StringView name);
void ReleaseFonts();

}  // namespace lumo
