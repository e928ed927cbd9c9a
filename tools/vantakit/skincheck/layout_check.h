// The layout of a window, and the layouts that it pulls in, held against what the library does with them.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "tools/vantakit/findings.h"
#include "tools/vantakit/skincheck/catalogue.h"
#include "tools/vantakit/skincheck/markup_source.h"
#include "tools/vantakit/skincheck/skin_theme.h"

namespace vantakit {

class LayoutCheck {
 public:
  // `window_folder` is where the window's pictures are, "SetupWnd\"; `globals` names the file of the themes.
  LayoutCheck(SkinTheme& theme, Catalogue& catalogue, lumo::String window_folder, std::string globals,
              Findings* findings);

  // The window's own layout.
  void Run(const FolderEntry& layout);

 private:
  struct Element {
    MarkupSource& source;
    lumo::String tag;
    int line;
  };
  struct NamedControl {
    std::string file;
    int line;
    lumo::String tag;
  };
  using Pairs = std::vector<std::pair<lumo::String, lumo::String>>;
  struct Binding {
    std::string file;
    int line;
    lumo::String receivers;
    lumo::String attributes;
  };

  void RunFile(const FolderEntry& layout, bool of_window);
  void CheckRoot(MarkupSource& source, bool of_window);
  int CheckChildren(MarkupSource& source, const Element* parent);  // how many controls there are among them
  void CheckElement(const Element& element, const Element* parent);
  void CheckBinding(const Element& element, const Element* parent);
  void CheckAttributes(const Element& element);
  void CheckControlAttribute(const Element& element, lumo::StringView name, lumo::StringView value, int line);
  void CheckWindowAttribute(const Element& element, lumo::StringView name, lumo::StringView value, int line);
  void CheckThemes(const Element& element, lumo::StringView names, int line);
  void CheckTheme(const Element& element, lumo::StringView name, int line);
  void CheckPages(const Element& element, int pages, int selected_line, int selected);
  void CheckReceivers();
  void CheckReceiver(const Binding& binding, const lumo::String& receiver, const Pairs& pairs);
  void NoteName(const Element& element, lumo::StringView name, int line);
  void SayUnknown(const Element& element, lumo::StringView name, int line);
  void Remarks(const std::string& file, int line, const std::string& before, lumo::ValueKind kind,
               lumo::StringView value);

  SkinTheme& theme_;
  Catalogue& catalogue_;
  lumo::String folder_;
  std::string globals_;
  Findings& findings_;
  int depth_ = 0;
  int files_ = 0;
  std::vector<const FolderEntry*> open_files_;
  std::set<lumo::String> open_themes_;
  std::map<lumo::String, NamedControl, std::less<>> names_;
  std::vector<Binding> bindings_;
};

}  // namespace vantakit
