// The rectangles of a layout, arranged in a window that has no native one.
#include <algorithm>
#include <stdexcept>

#include "lumo/controls/box_base.h"
#include "lumo/core/builder.h"
#include "lumo/core/library.h"
#include "lumo/core/markup_document.h"
#include "lumo/core/resource_source.h"
#include "lumo/core/result.h"
#include "lumo/core/scaling.h"
#include "lumo/core/window.h"
#include "tools/vantakit/preview/rects.h"
#include "tools/vantakit/view/control_views.h"
#include "tools/vantakit/view/json_text.h"

namespace vantakit {

using Json = nlohmann::json;

namespace {

// A skin without files and texts.
class EmptySkin final : public lumo::ResourceSource {
 public:
  bool IsPackaged() const override { return true; }
  const lumo::String& ThemeFolder() const override { return folder_; }
  bool Read(lumo::StringView, std::vector<BYTE>*) const override { return false; }
  bool Exists(lumo::StringView) const override { return false; }
  lumo::String GetString(lumo::StringView) const override { return {}; }

 private:
  lumo::String folder_;
};

class LibraryScope {
 public:
  explicit LibraryScope(int scale) {
    lumo::InitLibrary(skin_, false, nullptr);
    lumo::SetGlobalScalePercent(scale);
  }
  ~LibraryScope() {
    lumo::ShutdownLibrary();
    lumo::SetResourceSource(nullptr);
  }

 private:
  EmptySkin skin_;
};

// A window gives its attributes to the builder only once it is a native one.
void ApplyWindowElement(const lumo::String& xml, lumo::Window& window) {
  lumo::MarkupDocument document;
  if (lumo::LoadMarkup(xml.c_str(), &document) != lumo::LumoOk)
    throw std::runtime_error("the layout is not well-formed");
  document.Rewind();
  if (!document.NextElement() || document.TagName() != TEXT("Window")) return;
  lumo::String name, value;
  for (size_t n = 0; document.AttributeAt(n, &name, &value); ++n) window.SetAttribute(name.c_str(), value.c_str());
}

LONG Within(LONG size, LONG min, LONG max) {
  if (max >= 0) size = std::min(size, max);
  return std::max({size, min, LONG{0}});
}

SIZE ClientOf(lumo::ControlBase& root, const lumo::Window& window) {
  if (!root.DependsOnContent()) {
    const SIZE size = window.Attributes().size;
    return {lumo::ScaleLength(size.cx, window.ScalePercent()), lumo::ScaleLength(size.cy, window.ScalePercent())};
  }
  const SIZE wanted = root.EstimateSize({99999, 99999});
  return {Within(wanted.cx, root.ScaledMinWidth(), root.ScaledMaxWidth()),
          Within(wanted.cy, root.ScaledMinHeight(), root.ScaledMaxHeight())};
}

void CollectRects(lumo::ControlBase& control, Json& rects) {
  const RECT& at = control.Position();
  if (!control.Name().empty()) rects[vanta::ToUtf8(control.Name())] = {at.left, at.top, at.right, at.bottom};
  if (const lumo::BoxBase* const box = control.AsBox()) {
    for (lumo::ControlBase* const child : box->Children()) CollectRects(*child, rects);
  }
}

}  // namespace

Json LayoutRectsView(const Json& input) {
  const lumo::String xml = TextOf(input, "xml");
  const int scale = input.at("scale").get<int>();
  const LibraryScope library(scale);
  lumo::Window window;
  window.SetScalePercent(scale);
  ApplyWindowElement(xml, window);
  lumo::ControlBase* const root = lumo::BuildWindow(xml.c_str(), &window);
  if (!root) throw std::runtime_error("the layout holds no control");
  window.AttachRoot(root);
  const SIZE client = ClientOf(*root, window);
  const RECT area = {0, 0, client.cx, client.cy};
  window.RunLayoutPass(area);
  ArrangeHidden(window, area);
  Json rects = Json::object();
  CollectRects(*root, rects);
  return {{"client", {client.cx, client.cy}}, {"rects", rects}};
}

}  // namespace vantakit
