#include "tools/vantakit/view/control_views.h"

#include <memory>
#include <stdexcept>

#include "lumo/controls/color_spec.h"
#include "lumo/controls/control_state.h"
#include "lumo/controls/control_text.h"
#include "lumo/controls/make_control.h"
#include "lumo/controls/progress_bar.h"
#include "lumo/core/builder.h"
#include "lumo/core/handler.h"
#include "lumo/core/window.h"
#include "tools/vantakit/view/json_text.h"

namespace vantakit {

using Json = nlohmann::json;

namespace {

Json JsonOf(const RECT& rect) { return {rect.left, rect.top, rect.right, rect.bottom}; }

void SetWhenGiven(lumo::ControlBase& control, const Json& input, const char* name) {
  const Json& value = input.at(name);
  if (!value.is_null()) control.SetAttribute(vanta::FromUtf8(name).c_str(), TextOf(value).c_str());
}

// Writes down what options send.
class OptionEvents final : public lumo::lumowin {
 public:
  explicit OptionEvents(const lumo::BoxBase& box) : box_(box) {}
  void OnNotify(lumo::_Msg& record) override {
    const char* const name = NameOf(record.type);
    if (name) events_.push_back({name, box_.GetItemIndex(record.control)});
  }
  Json Take() { return std::exchange(events_, Json::array()); }

 private:
  static const char* NameOf(int type) {
    switch (type) {
      case lumo::EventClick:
        return "click";
      case lumo::EventSelect:
        return "select";
      case lumo::EventUnselect:
        return "unselect";
      default:
        return nullptr;
    }
  }

  const lumo::BoxBase& box_;
  Json events_ = Json::array();
};

void RunOn(lumo::Option& option, const std::string& op) {
  if (op == "click") {
    option.Activate();
  } else if (op == "set0" || op == "set1") {
    option.SetSelected(op == "set1", true);
  } else {
    throw std::runtime_error("unknown op \"" + op + "\"");
  }
}

}  // namespace

Json GlobalsColorSpecView(const Json& input) {
  lumo::ColorSpec spec;
  spec.Assign(TextOf(input, "text"));
  return {{"color", vanta::ToUtf8(spec.color)},   {"color1", vanta::ToUtf8(spec.color1)},
          {"color2", vanta::ToUtf8(spec.color2)}, {"dest", JsonOf(spec.dest)},
          {"gradient", spec.IsGradient()},        {"mode", spec.mode}};
}

Json TextStyleView(const Json& input) {
  const std::unique_ptr<lumo::ControlBase> control(lumo::CreateControl(TextOf(input, "control")));
  if (!control || !control->TextPart()) throw std::runtime_error("\"control\" names no control with a text");
  for (const Json& words : input.at("align")) control->SetAttribute(TEXT("align"), TextOf(words).c_str());
  SetWhenGiven(*control, input, "singleline");
  SetWhenGiven(*control, input, "endellipsis");
  return {{"stored", control->TextPart()->Style()}, {"used", control->TextPart()->UsedStyle()}};
}

Json TextStateColorView(const Json& input) {
  lumo::StateValues<lumo::String> colors;
  for (const auto& [state, text] : input.at("colors").items()) {
    if (state.size() != 1 || state[0] < '0' || state[0] > '3') throw std::runtime_error("states are \"0\" to \"3\"");
    colors.At(state[0] - '0') = TextOf(text);
  }
  Json shown = Json::array();
  for (int state = 0; state < lumo::kStateCount; ++state) {
    const lumo::String* const text = colors.Shown(state);
    shown.push_back(text ? vanta::ToUtf8(*text) : "");
  }
  return {{"shown", shown}};
}

Json ProgressFillView(const Json& input) {
  const auto number = [&input](const char* name) { return input.at(name).get<int>(); };
  lumo::Progress bar;
  bar.SetPos({number("left"), number("top"), number("left") + number("width"), number("top") + number("height")});
  lumo::ProgressBar& part = *bar.ProgressPart();
  part.SetMin(number("min"));
  part.SetMax(number("max"));
  part.SetValue(input.at("value").get<double>());
  part.SetHorizontal(input.at("horizontal").get<bool>());
  const RECT filled = part.SettleFill();
  const lumo::ProgressRange& range = part.Range();
  const RECT fill = lumo::ProgressFill(range, number("width"), number("height"), part.IsHorizontal());
  return {{"min", range.min},
          {"max", range.max},
          {"value", range.value},
          {"fill", JsonOf(fill)},
          {"colorRect", JsonOf(filled)},
          {"imageRect", JsonOf(filled)}};
}

Json EventsOptionsView(const Json& input) {
  lumo::Window window;
  auto* const box = new lumo::VBox;
  OptionEvents handler(*box);
  window.SetHandler(&handler);
  window.AttachRoot(box);
  std::vector<lumo::Option*> options;
  for (int i = input.at("group").get<int>(); i > 0; --i) {
    options.push_back(new lumo::Option);
    box->Add(options.back());
    options.back()->SetGroup(TEXT("group"));
  }
  handler.Take();
  for (const Json& op : input.at("ops")) RunOn(*options.at(op.at(1).get<size_t>()), op.at(0).get<std::string>());
  Json selected = Json::array();
  for (const lumo::Option* const option : options) selected.push_back(option->IsSelected());
  return {{"selected", selected}, {"events", handler.Take()}};
}

}  // namespace vantakit
