#include "tools/vantakit/skincheck/layout_check.h"

#include <algorithm>
#include <optional>

#include "lumo/core/attribute_list.h"
#include "lumo/core/builder.h"
#include "lumo/core/event.h"
#include "lumo/core/value_readers.h"
#include "tools/vantakit/skincheck/value_check.h"

namespace vantakit {
namespace {

using lumo::StringView;
using lumo::ValueKind;

constexpr StringView kWindow = TEXT("Window");

std::string Utf8(StringView text) { return vanta::ToUtf8(text); }

std::string Guess(StringView near) { return near.empty() ? std::string() : "; \"" + Utf8(near) + "\"?"; }

bool IsBindingTag(StringView tag) { return tag == TEXT("Event") || tag == TEXT("BubbledEvent"); }

std::vector<lumo::String> SplitAtSpaces(StringView text) {
  std::vector<lumo::String> pieces;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(' '), text.size());
    if (end) pieces.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return pieces;
}

// The pairs of a binding's list; false when it was not read to its end.
bool ReadList(StringView list, std::vector<std::pair<lumo::String, lumo::String>>* pairs) {
  const WCHAR* end = list.data();
  StringView name, value;
  for (lumo::AttributeListReader reader(list); reader.Next(&name, &value);) {
    pairs->emplace_back(name, value);
    end = value.data() + value.size() + 1;
  }
  return end == list.data() + list.size();
}

}  // namespace

LayoutCheck::LayoutCheck(SkinTheme& theme, Catalogue& catalogue, lumo::String window_folder, std::string globals,
                         Findings* findings)
    : theme_(theme),
      catalogue_(catalogue),
      folder_(std::move(window_folder)),
      globals_(std::move(globals)),
      findings_(*findings) {}

void LayoutCheck::Run(const FolderEntry& layout) {
  RunFile(layout, true);
  CheckReceivers();
}

void LayoutCheck::RunFile(const FolderEntry& layout, bool of_window) {
  if (++files_ > lumo::kMostLayoutFiles) return;
  open_files_.push_back(&layout);
  MarkupSource source(layout.name, ReadText(layout.file));
  FindMarkupFaults(source, &findings_);
  CheckRoot(source, of_window);
  open_files_.pop_back();
}

void LayoutCheck::CheckRoot(MarkupSource& source, bool of_window) {
  lumo::MarkupDocument& document = source.Document();
  document.Rewind();
  if (!document.NextElement()) return;
  const Element root = {source, lumo::String(document.TagName()), source.LineOf(document.TagName())};
  if (of_window && root.tag != kWindow) {
    findings_.push_back(
        source.At(root.line, "the root is <" + Utf8(root.tag) + ">, so its attributes are passed over; <Window>?"));
  } else if (of_window) {
    CheckAttributes(root);
  }
  const int controls = CheckChildren(source, nullptr);
  if (controls == 0) findings_.push_back(source.At(root.line, "holds no control, so nothing is made of it"));
  if (controls > 1) findings_.push_back(source.At(root.line, "holds more than one control; only the last is kept"));
}

int LayoutCheck::CheckChildren(MarkupSource& source, const Element* parent) {
  lumo::MarkupDocument& document = source.Document();
  int controls = 0;
  ++depth_;
  while (document.NextChild()) {
    document.EnterChild();
    const Element element = {source, lumo::String(document.TagName()), source.LineOf(document.TagName())};
    if (depth_ > lumo::kDeepestLayout) {
      if (depth_ == lumo::kDeepestLayout + 1)
        findings_.push_back(source.At(element.line, "nested too deep: the layout is refused"));
    } else if (IsBindingTag(element.tag)) {
      CheckBinding(element, parent);
    } else {
      controls += catalogue_.HasTag(element.tag);
      CheckElement(element, parent);
    }
    document.LeaveElement();
  }
  --depth_;
  return controls;
}

void LayoutCheck::CheckElement(const Element& element, const Element* parent) {
  if (!catalogue_.HasTag(element.tag)) {
    findings_.push_back(element.source.At(element.line, "unknown tag <" + Utf8(element.tag) +
                                                            ">; it is passed over with all that is in it" +
                                                            Guess(catalogue_.TagNear(element.tag))));
  } else {
    const bool dropped = parent && catalogue_.HasTag(parent->tag) && !catalogue_.IsContainer(parent->tag);
    if (dropped && element.source.IsWellFormed()) {
      findings_.push_back(element.source.At(element.line, "<" + Utf8(parent->tag) + "> holds no children, so this <" +
                                                              Utf8(element.tag) + "> is dropped"));
    }
    CheckAttributes(element);
  }
  int selected = 0, selected_line = 0;
  StringView name, value;
  for (std::size_t n = 0; element.source.Document().AttributeAt(n, &name, &value); ++n) {
    if (name != TEXT("selectedid")) continue;
    selected = lumo::ReadInteger(value);
    selected_line = element.source.LineOf(name);
  }
  const int children = CheckChildren(element.source, &element);
  if (selected_line && element.tag == TEXT("TabBox")) CheckPages(element, children, selected_line, selected);
}

void LayoutCheck::CheckPages(const Element& element, int pages, int selected_line, int selected) {
  if (selected >= -1 && selected < pages) return;
  findings_.push_back(element.source.At(selected_line, "selectedid=\"" + std::to_string(selected) +
                                                           "\": the pages are 0 to " + std::to_string(pages - 1)));
}

void LayoutCheck::CheckAttributes(const Element& element) {
  std::set<lumo::String> seen;
  StringView name, value;
  for (std::size_t n = 0; element.source.Document().AttributeAt(n, &name, &value); ++n) {
    const int line = element.source.LineOf(name);
    if (!seen.insert(lumo::String(name)).second)
      findings_.push_back(element.source.At(line, "\"" + Utf8(name) + "\" is given twice"));
    if (element.tag == kWindow) {
      CheckWindowAttribute(element, name, value, line);
    } else {
      CheckControlAttribute(element, name, value, line);
    }
  }
}

void LayoutCheck::CheckWindowAttribute(const Element& element, StringView name, StringView value, int line) {
  const std::optional<ValueKind> kind = catalogue_.WindowKindOf(name);
  if (!kind) return SayUnknown(element, name, line);
  Remarks(element.source.Name(), line, Quote(name, value), *kind, value);
}

void LayoutCheck::CheckControlAttribute(const Element& element, StringView name, StringView value, int line) {
  const std::optional<ValueKind> kind = catalogue_.KindOf(element.tag, name);
  if (!kind) return SayUnknown(element, name, line);
  if (*kind == ValueKind::Name) return NoteName(element, value, line);
  Remarks(element.source.Name(), line, Quote(name, value), *kind, value);
  if (*kind == ValueKind::Themes) CheckThemes(element, value, line);
  const bool pulls_in = *kind == ValueKind::LayoutFile && !value.empty();
  const FolderEntry* const layout = pulls_in ? theme_.FindEntry(theme_.ThemeFolder() + lumo::String(value)) : nullptr;
  if (layout && std::ranges::find(open_files_, layout) != open_files_.end()) {
    findings_.push_back(element.source.At(line, Quote(name, value) + ": a layout that pulls itself in is refused"));
  } else if (layout) {
    RunFile(*layout, false);
  }
}

void LayoutCheck::SayUnknown(const Element& element, StringView name, int line) {
  findings_.push_back(element.source.At(line, "<" + Utf8(element.tag) + "> has no attribute \"" + Utf8(name) + "\"" +
                                                  Guess(catalogue_.AttributeNear(element.tag, name))));
}

void LayoutCheck::Remarks(const std::string& file, int line, const std::string& before, ValueKind kind,
                          StringView value) {
  for (const Remark& remark : CheckValue(theme_, folder_, kind, value)) {
    findings_.push_back({file, before + ": " + remark.message, line, remark.severity});
  }
}

void LayoutCheck::CheckThemes(const Element& element, StringView names, int line) {
  for (const lumo::String& name : SplitAtSpaces(names)) CheckTheme(element, name, line);
}

// Pictures are the theme's business and lie beside the window: both are named.
void LayoutCheck::CheckTheme(const Element& element, StringView name, int line) {
  const ThemeDefinition* const theme = Use(theme_.themes, name);
  if (!theme || !open_themes_.insert(lumo::String(name)).second) return;
  for (const ThemeAttribute& attribute : theme->attributes) {
    const std::optional<ValueKind> kind = catalogue_.KindOf(element.tag, attribute.name);
    if (!kind) {
      if (!catalogue_.AnyKindOf(attribute.name)) continue;
      findings_.push_back(element.source.At(line,
                                            "<" + Utf8(element.tag) + "> does not take \"" + Utf8(attribute.name) +
                                                "\" of the theme \"" + Utf8(name) + "\"",
                                            Finding::Warning));
    } else if (NamesPicture(*kind)) {
      Remarks(globals_, attribute.line, Quote(attribute.name, attribute.value) + " for " + element.source.Name(), *kind,
              attribute.value);
    } else if (*kind == ValueKind::Themes) {
      CheckThemes(element, attribute.value, line);
    }
  }
  open_themes_.erase(lumo::String(name));
}

void LayoutCheck::NoteName(const Element& element, StringView name, int line) {
  if (name.empty()) return;
  const auto [row, fresh] =
      names_.try_emplace(lumo::String(name), NamedControl{element.source.Name(), line, element.tag});
  if (fresh) return;
  const NamedControl& first = row->second;
  const std::string where = first.file == element.source.Name() ? "line " + std::to_string(first.line)
                                                                : first.file + ":" + std::to_string(first.line);
  findings_.push_back(element.source.At(
      line, "\"" + Utf8(name) + "\" is the name of the control in " + where + " too; only the last is found by it"));
}

void LayoutCheck::CheckBinding(const Element& element, const Element* parent) {
  const bool bubbled = element.tag == TEXT("BubbledEvent");
  const bool attached = parent && catalogue_.HasTag(parent->tag) && (!bubbled || catalogue_.IsContainer(parent->tag));
  if (!attached) {
    findings_.push_back(element.source.At(
        element.line, "<" + Utf8(element.tag) + "> belongs into a " + (bubbled ? "container" : "control")));
  }
  Binding binding = {element.source.Name(), element.line, {}, {}};
  StringView name, value;
  for (std::size_t n = 0; element.source.Document().AttributeAt(n, &name, &value); ++n) {
    const int line = element.source.LineOf(name);
    if (name == TEXT("type")) {
      for (const lumo::String& type : SplitAtSpaces(value)) {
        if (!lumo::EventTypeFromName(type))
          findings_.push_back(
              element.source.At(line, "no event is called \"" + Utf8(type) + "\", so this never happens"));
      }
    } else if (name == TEXT("receiver")) {
      binding.receivers = value;
    } else if (name == TEXT("attribute")) {
      binding.attributes = value;
    } else {
      SayUnknown(element, name, line);
    }
  }
  bindings_.push_back(std::move(binding));
}

// Once all names are known: receivers may stand anywhere in the window.
void LayoutCheck::CheckReceivers() {
  for (const Binding& binding : bindings_) {
    Pairs pairs;
    if (!ReadList(binding.attributes, &pairs)) {
      findings_.push_back({binding.file,
                           "the list of attributes is not read to its end: name=\"value\", one space between two",
                           binding.line});
    }
    for (const lumo::String& receiver : SplitAtSpaces(binding.receivers)) CheckReceiver(binding, receiver, pairs);
  }
}

void LayoutCheck::CheckReceiver(const Binding& binding, const lumo::String& receiver, const Pairs& pairs) {
  const auto control = names_.find(receiver);
  if (control == names_.end()) {
    findings_.push_back({binding.file, "no control is named \"" + Utf8(receiver) + "\"", binding.line});
    return;
  }
  for (const auto& [name, value] : pairs) {
    const std::optional<ValueKind> kind = catalogue_.KindOf(control->second.tag, name);
    if (kind) {
      Remarks(binding.file, binding.line, Quote(name, value), *kind, value);
    } else {
      const std::string tag = Utf8(control->second.tag);
      findings_.push_back({binding.file, "<" + tag + "> has no attribute \"" + Utf8(name) + "\"", binding.line});
    }
  }
}

}  // namespace vantakit
