#include "lumo/core/builder.h"

#include "base/lock.h"
#include "lumo/controls/box_base.h"
#include "lumo/core/load_markup.h"
#include "lumo/core/markup_document.h"
#include "lumo/core/result.h"
#include "lumo/core/window.h"

#include <algorithm>

namespace lumo {
namespace {

// What is being built on this thread, across files that pull in others.
struct BuildState {
  int depth = 0;
  int files = 0;  // since the outermost one began
  std::vector<String> open_files;
};
constinit vanta::Lazy<BuildState> build_state;

bool EqualPaths(const String& a, const String& b) { return vanta::EqualNoCase(a, b); }

// A layout file for as long as it is being built; refused when it is being built already or enough files were.
class FileScope {
 public:
  explicit FileScope(const WCHAR* path) : state_(build_state.Get()) {
    std::vector<String>& open = state_.open_files;
    if (open.empty()) state_.files = 0;
    const auto same = [path](const String& other) { return EqualPaths(other, path); };
    entered_ = state_.files < kMostLayoutFiles && std::none_of(open.begin(), open.end(), same);
    if (!entered_) return;
    ++state_.files;
    open.push_back(path);
  }
  ~FileScope() {
    if (entered_) state_.open_files.pop_back();
  }
  FileScope(const FileScope&) = delete;
  FileScope& operator=(const FileScope&) = delete;
  explicit operator bool() const { return entered_; }

 private:
  BuildState& state_;
  bool entered_;
};

bool IsBinding(StringView tag) { return tag == TEXT("Event") || tag == TEXT("BubbledEvent"); }

std::vector<StringView> SplitAtSpaces(StringView text) {
  std::vector<StringView> pieces;
  while (!text.empty()) {
    const size_t end = std::min(text.find(' '), text.size());
    if (end) pieces.push_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return pieces;
}

class TreeBuilder {
 public:
  TreeBuilder(MarkupDocument& document, Window* window) : document_(document), window_(window) {}

  // The control made last, or null; with `refused` set, what this level made without a parent is destroyed.
  ControlBase* BuildChildren(ControlBase* parent) {
    int& depth = build_state.Get().depth;
    ControlBase* last = nullptr;
    ++depth;
    while (!refused_ && document_.NextChild()) {
      document_.EnterChild();
      if (IsBinding(document_.TagName())) {
        AttachBindings(parent);
      } else if (ControlBase* const control = BuildElement()) {
        last = Place(control, last, parent);
      }
      document_.LeaveElement();
    }
    --depth;
    if (!refused_) return last;
    if (!parent) delete last;
    return nullptr;
  }

 private:
  // The element at the main position with everything in it; null for unknown tags and refused layouts.
  ControlBase* BuildElement() {
    ControlBase* const control = CreateControl(document_.TagName());
    if (!control) return nullptr;
    refused_ = build_state.Get().depth > kDeepestLayout;
    if (!refused_) {
      control->SetOwningWindow(window_);
      ApplyAttributes(*control);
      BuildChildren(control);
    }
    if (!refused_) return control;
    delete control;
    return nullptr;
  }

  void ApplyAttributes(ControlBase& control) {
    for (size_t n = 0; document_.AttributeAt(n, &name_, &value_); ++n) {
      control.SetAttribute(name_.c_str(), value_.c_str());
    }
  }

  // Hands the control to its parent, or keeps it as this level's answer; what nobody takes is destroyed.
  static ControlBase* Place(ControlBase* control, ControlBase* last, ControlBase* parent) {
    if (!parent) {
      delete last;
      return control;
    }
    BoxBase* const box = parent->AsBox();
    if (box && box->Add(control)) return control;
    delete control;
    return last;
  }

  void AttachBindings(ControlBase* parent) {
    if (!parent) return;
    String types, receivers, attribute;
    for (size_t n = 0; document_.AttributeAt(n, &name_, &value_); ++n) {
      if (name_ == TEXT("type")) types = value_;
      if (name_ == TEXT("receiver")) receivers = value_;
      if (name_ == TEXT("attribute")) attribute = value_;
    }
    for (const StringView type : SplitAtSpaces(types)) {
      for (const StringView receiver : SplitAtSpaces(receivers)) {
        parent->AttachXmlEvent(document_.TagName(), type, receiver, attribute);
      }
    }
  }

  MarkupDocument& document_;
  Window* const window_;
  bool refused_ = false;
  String name_, value_;
};

// False when an attribute's effect destroyed the window.
bool ApplyWindowAttributes(MarkupDocument& document, Window* window) {
  const WeakRef<Window> alive(window);
  if (document.TagName() != TEXT("Window") || !window || !window->Handle()) return true;
  String name, value;
  for (size_t n = 0; alive && document.AttributeAt(n, &name, &value); ++n) {
    window->SetAttribute(name.c_str(), value.c_str());
  }
  return static_cast<bool>(alive);
}

}  // namespace

ControlBase* BuildWindow(const WCHAR* path, Window* window) {
  MarkupDocument document;
  if (LoadMarkup(path, &document) != LumoOk) return nullptr;
  const FileScope file(path);
  document.Rewind();
  if (!file || !document.NextElement() || !ApplyWindowAttributes(document, window)) return nullptr;
  return Build(&document, window, nullptr);
}

ControlBase* Build(MarkupDocument* document, Window* window, ControlBase* parent) {
  return TreeBuilder(*document, window).BuildChildren(parent);
}

ControlBase* CreateControl(StringView tag) {
  for (const ControlTag& row : ControlTags()) {
    if (row.tag == tag) return row.make();
  }
  return nullptr;
}

BoxBase* BuildFromFile(const WCHAR* path) {
  ControlBase* const built = BuildWindow(path, nullptr);
  BoxBase* const box = built ? built->AsBox() : nullptr;
  if (!box) delete built;
  return box;
}

}  // namespace lumo
