#include "tools/vantakit/preview/rects.h"

#include <nlohmann/json.hpp>

#include "lumo/controls/box_base.h"
#include "lumo/controls/control_interfaces.h"
#include "lumo/core/window.h"

namespace vantakit {
namespace {

using Json = nlohmann::json;

Json ToJson(const RECT& rect) { return {rect.left, rect.top, rect.right, rect.bottom}; }

void Collect(lumo::ControlBase& control, int depth, Json* out) {
  out->push_back({{"name", vanta::ToUtf8(control.Name())},
                  {"class", vanta::ToUtf8(control.ClassName())},
                  {"depth", depth},
                  {"visible", control.IsVisible()},
                  {"rect", ToJson(control.Position())}});
  const lumo::BoxBase* const box = control.AsBox();
  if (!box) return;
  for (lumo::ControlBase* const child : box->Children()) Collect(*child, depth + 1, out);
}

// Every page of every tab box is shown once, with the page that was selected last.
void ShowPages(lumo::ControlBase& control, lumo::Window& window, const RECT& client) {
  if (lumo::ITabBox* const tabs = control.AsTabBox()) {
    const int selected = tabs->GetSelected();
    for (int page = 0; page < tabs->GetCount(); ++page) {
      tabs->Select(page);
      window.RunLayoutPass(client);
      ShowPages(*tabs->GetItemAt(page), window, client);
    }
    tabs->Select(selected);
    window.RunLayoutPass(client);
    return;
  }
  const lumo::BoxBase* const box = control.AsBox();
  if (!box) return;
  for (lumo::ControlBase* const child : box->Children()) ShowPages(*child, window, client);
}

RECT ClientOf(const lumo::Window& window) {
  RECT client = {};
  GetClientRect(window.Handle(), &client);
  return client;
}

}  // namespace

void ArrangeHidden(lumo::Window& window, const RECT& client) {
  if (window.Root()) ShowPages(*window.Root(), window, client);
}

Json ControlsOf(const lumo::Window& window) {
  Json controls = Json::array();
  if (window.Root()) Collect(*window.Root(), 0, &controls);
  return controls;
}

Json RectsOf(lumo::Window& window) {
  const RECT client = ClientOf(window);
  ArrangeHidden(window, client);
  return {
      {"scale", window.ScalePercent()}, {"client", {client.right, client.bottom}}, {"controls", ControlsOf(window)}};
}

}  // namespace vantakit
