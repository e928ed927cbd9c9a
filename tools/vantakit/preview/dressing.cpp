#include "tools/vantakit/preview/dressing.h"

#include "lumo/controls/box_base.h"
#include "lumo/controls/control_interfaces.h"
#include "lumo/core/window.h"
#include "tools/vantakit/commands.h"

namespace vantakit {
namespace {

using lumo::ControlBase;

ControlBase& Named(lumo::Window& window, const std::string& name) {
  ControlBase* const control = window.FindControl(vanta::FromUtf8(name));
  if (!control) throw Failure("no control is named \"" + name + "\"");
  return *control;
}

void SelectPage(lumo::Window& window, const std::string& name) {
  ControlBase& page = Named(window, name);
  lumo::ITabBox* const tabs = page.Parent() ? page.Parent()->AsTabBox() : nullptr;
  if (!tabs || !tabs->SelectPage(&page)) throw Failure("\"" + name + "\" is no page of a tab box");
}

void SetSelected(ControlBase& control, bool selected) {
  if (lumo::ICheckBox* const box = control.AsCheckBox()) return box->SetSelected(selected, false);
  if (lumo::IOption* const option = control.AsOption()) return option->SetSelected(selected, false);
  throw Failure("\"" + vanta::ToUtf8(control.Name()) + "\" cannot be selected");
}

struct StateWord {
  const char* word;
  void (*apply)(ControlBase& control);
};

constexpr StateWord kWords[] = {
    {"normal", [](ControlBase& c) { c.SetState(lumo::StateNormal); }},
    {"hot", [](ControlBase& c) { c.SetState(lumo::StateHot); }},
    {"pushed", [](ControlBase& c) { c.SetState(lumo::StatePushed); }},
    {"disabled", [](ControlBase& c) { c.SetEnabled(false); }},
    {"selected", [](ControlBase& c) { SetSelected(c, true); }},
    {"unselected", [](ControlBase& c) { SetSelected(c, false); }},
    {"shown", [](ControlBase& c) { c.SetVisible(true); }},
    {"hidden", [](ControlBase& c) { c.SetVisible(false); }},
    {"focused", [](ControlBase& c) { c.SetFocus(); }},
};

void ApplyState(lumo::Window& window, const std::string& text) {
  const std::size_t equals = text.find('=');
  if (equals == text.npos) throw Failure("a state is NAME=WORD: \"" + text + "\"");
  const std::string word = text.substr(equals + 1);
  for (const StateWord& row : kWords) {
    if (word == row.word) return row.apply(Named(window, text.substr(0, equals)));
  }
  throw Failure("no state is called \"" + word + "\"");
}

void ApplyValue(lumo::Window& window, const std::string& text) {
  const std::size_t equals = text.find('=');
  const std::size_t dot = text.substr(0, equals).rfind('.');
  if (equals == text.npos || dot == text.npos) throw Failure("a value is NAME.ATTRIBUTE=VALUE: \"" + text + "\"");
  Named(window, text.substr(0, dot))
      .SetAttribute(vanta::FromUtf8(text.substr(dot + 1, equals - dot - 1)).c_str(),
                    vanta::FromUtf8(text.substr(equals + 1)).c_str());
}

}  // namespace

void Dress(lumo::Window& window, const Dressing& dressing) {
  if (!dressing.page.empty()) SelectPage(window, dressing.page);
  for (const std::string& value : dressing.values) ApplyValue(window, value);
  for (const std::string& state : dressing.states) ApplyState(window, state);
}

}  // namespace vantakit
