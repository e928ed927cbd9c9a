#include "tools/vantakit/skincheck/theme_check.h"

#include <algorithm>

#include "lumo/core/builder.h"
#include "lumo/render/gdip.h"
#include "lumo/render/image_cache.h"
#include "tools/vantakit/skincheck/global_check.h"
#include "tools/vantakit/skincheck/layout_check.h"

namespace vantakit {
namespace {

constexpr const char* kGlobals = "global.xml";

// The theme is what the library reads from, and GDI+ is there.
class DrawingScope {
 public:
  explicit DrawingScope(const SkinTheme& theme) {
    lumo::SetResourceSource(&theme);
    Gdiplus::GdiplusStartupInput input;
    if (Gdiplus::GdiplusStartup(&token_, &input, nullptr) != Gdiplus::Ok) token_ = 0;
  }
  ~DrawingScope() {
    if (token_) Gdiplus::GdiplusShutdown(token_);
    lumo::SetResourceSource(nullptr);
  }
  DrawingScope(const DrawingScope&) = delete;
  DrawingScope& operator=(const DrawingScope&) = delete;

 private:
  ULONG_PTR token_ = 0;
};

class ThemeCheck {
 public:
  explicit ThemeCheck(SkinTheme& theme) : theme_(theme), globals_(theme.Folder() + kGlobals) {}

  Findings Run(bool unused) {
    const DrawingScope scope(theme_);
    CheckGlobalFile();
    CheckLayouts();
    std::ranges::stable_sort(findings_, {}, [](const Finding& each) { return std::tie(each.place, each.line); });
    findings_.erase(std::unique(findings_.begin(), findings_.end()), findings_.end());
    if (unused) FindUnused();
    return std::move(findings_);
  }

 private:
  void CheckGlobalFile() {
    const FolderEntry* const entry = theme_.FindEntry(vanta::FromUtf8(globals_));
    if (!entry) return findings_.push_back({globals_, "missing; there are no fonts, colours and themes"});
    MarkupSource source(entry->name, ReadText(entry->file));
    CheckGlobals(source, catalogue_, &theme_, &findings_);
  }

  bool IsLayout(const FolderEntry& entry) const {
    return entry.name.ends_with(".xml") &&
           !vanta::EqualNoCase(vanta::FromUtf8(entry.name).c_str(), vanta::FromUtf8(globals_).c_str());
  }

  lumo::String WindowFolder(const FolderEntry& layout) const {
    lumo::String folder = vanta::FromUtf8(layout.name.substr(theme_.Folder().size()));
    folder.resize(folder.rfind('/') + 1);
    std::ranges::replace(folder, WCHAR{'/'}, WCHAR{'\\'});
    return folder;
  }

  // Those that others pull in are parts of those others.
  void CheckLayouts() {
    for (const FolderEntry* const entry : theme_.Entries()) {
      if (IsLayout(*entry)) FindPulledIn(*entry);
    }
    for (const FolderEntry* const entry : theme_.Entries()) {
      if (!IsLayout(*entry) || parts_.contains(entry)) continue;
      LayoutCheck(theme_, catalogue_, WindowFolder(*entry), globals_, &findings_).Run(*entry);
    }
  }

  void FindPulledIn(const FolderEntry& layout) {
    MarkupSource source(layout.name, ReadText(layout.file));
    FindPulledInBelow(source.Document(), layout, 0);
  }

  void FindPulledInBelow(lumo::MarkupDocument& document, const FolderEntry& layout, int depth) {
    while (depth <= lumo::kDeepestLayout && document.NextChild()) {
      document.EnterChild();
      lumo::String name, value;
      for (std::size_t n = 0; document.TagName() == TEXT("ChildBox") && document.AttributeAt(n, &name, &value); ++n) {
        const bool file = catalogue_.AnyKindOf(name) == lumo::ValueKind::LayoutFile;
        const FolderEntry* const part = file ? theme_.FindEntry(theme_.ThemeFolder() + value) : nullptr;
        if (part && part != &layout) parts_.insert(part);
      }
      FindPulledInBelow(document, layout, depth + 1);
      document.LeaveElement();
    }
  }

  template <class Map>
  void FindUnusedOf(const Map& definitions, const char* what) {
    for (const auto& [name, definition] : definitions) {
      if (definition.used) continue;
      findings_.push_back({globals_, std::string(what) + " \"" + vanta::ToUtf8(name) + "\" is not used",
                           definition.line, Finding::Warning});
    }
  }

  void FindUnused() {
    FindUnusedOf(theme_.fonts, "font");
    FindUnusedOf(theme_.colors, "colour");
    FindUnusedOf(theme_.themes, "theme");
    for (const FolderEntry* const entry : theme_.Entries()) {
      if (!entry->name.ends_with(".xml") && !theme_.IsUsed(*entry))
        findings_.push_back({entry->name, "is in no layout", 0, Finding::Warning});
    }
  }

  SkinTheme& theme_;
  const std::string globals_;
  Catalogue catalogue_;
  std::set<const FolderEntry*> parts_;
  Findings findings_;
};

}  // namespace

Findings CheckTheme(SkinTheme& theme, bool unused) { return ThemeCheck(theme).Run(unused); }

}  // namespace vantakit
