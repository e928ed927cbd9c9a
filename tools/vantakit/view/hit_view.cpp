// What a press at a point of a window does.
#include <memory>
#include <stdexcept>

#include "lumo/controls/control_base.h"
#include "lumo/core/builder.h"
#include "lumo/core/hit_test.h"
#include "lumo/core/scaling.h"
#include "tools/vantakit/view/control_views.h"
#include "tools/vantakit/view/json_text.h"

namespace vantakit {

using Json = nlohmann::json;

namespace {

RECT RectOf(const Json& json) {
  if (json.size() == 2) return {0, 0, json.at(0), json.at(1)};
  return {json.at(0), json.at(1), json.at(2), json.at(3)};
}

const char* NameOfHit(int hit) {
  switch (hit) {
    case HTCAPTION:
      return "caption";
    case HTLEFT:
      return "left";
    case HTRIGHT:
      return "right";
    case HTTOP:
      return "top";
    case HTBOTTOM:
      return "bottom";
    case HTTOPLEFT:
      return "topleft";
    case HTTOPRIGHT:
      return "topright";
    case HTBOTTOMLEFT:
      return "bottomleft";
    case HTBOTTOMRIGHT:
      return "bottomright";
    default:
      return "client";
  }
}

std::unique_ptr<lumo::ControlBase> ControlOf(const Json& tag) {
  if (tag.is_null()) return nullptr;
  std::unique_ptr<lumo::ControlBase> control(lumo::CreateControl(TextOf(tag)));
  if (!control) throw std::runtime_error("\"control\" is no tag");
  return control;
}

}  // namespace

Json WindowHitView(const Json& input) {
  const int scale = input.at("scale").get<int>();
  const lumo::FrameShape frame = {RectOf(input.at("client")), lumo::ScaleRect(RectOf(input.at("sizebox")), scale),
                                  lumo::ScaleRect(RectOf(input.at("caption")), scale),
                                  input.at("maximised").get<bool>()};
  const POINT point = {input.at("point").at(0), input.at("point").at(1)};
  const auto control = ControlOf(input.at("control"));
  return {{"hit", NameOfHit(lumo::HitFrame(frame, point, [&] { return lumo::TakesPress(control.get()); }))}};
}

}  // namespace vantakit
