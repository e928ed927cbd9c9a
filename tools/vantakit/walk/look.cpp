#include "tools/vantakit/walk/look.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "base/text.h"
#include "lumo/controls/control_base.h"
#include "lumo/controls/control_interfaces.h"
#include "lumo/core/window.h"
#include "tools/vantakit/walk/open_windows.h"
#include "winhost/dialogs/folder_dialog.h"

namespace vantakit {
namespace {

using Json = nlohmann::ordered_json;

lumo::ControlBase* Find(const OpenWindow* window, const WCHAR* name) {
  return window && window->skinned ? window->skinned->FindControl(name) : nullptr;
}

Json TextOf(lumo::ControlBase* control) {
  lumo::ILabel* const label = control ? control->AsLabel() : nullptr;
  return label ? Json(vanta::ToUtf8(label->GetText())) : Json();
}

Json PageOf(const OpenWindow* setup) {
  lumo::ControlBase* const box = Find(setup, TEXT("tb_bottom"));
  lumo::ITabBox* const pages = box ? box->AsTabBox() : nullptr;
  if (!pages || pages->GetSelected() < 0) return nullptr;
  return vanta::ToUtf8(pages->GetItemAt(pages->GetSelected())->Name());
}

Json TipOf(const OpenWindow* setup) {
  lumo::ControlBase* const tip = Find(setup, TEXT("lb_tips"));
  return tip && tip->IsVisible() ? TextOf(tip) : Json();
}

Json ProgressOf(const OpenWindow* setup) {
  lumo::ControlBase* const bar = Find(setup, TEXT("pg_insting"));
  if (!bar || !bar->AsProgress()) return nullptr;
  const double value = bar->AsProgress()->GetValue();
  return {{"value", static_cast<int>(value)}, {"text", TextOf(Find(setup, TEXT("lb_insting")))}};
}

Json FocusOf(const OpenWindow* window) {
  lumo::ControlBase* const focused = window ? window->skinned->Focused() : nullptr;
  return focused ? Json(vanta::ToUtf8(focused->Name())) : Json();
}

Json StateOf(lumo::ControlBase* control) {
  Json state = {{"enabled", control->IsEnabled()}, {"visible", control->IsVisible()}};
  if (lumo::ICheckBox* const box = control->AsCheckBox()) state["selected"] = box->IsSelected();
  const Json text = TextOf(control);
  if (text.is_string() && text != "") state["text"] = text;
  return state;
}

// What a field or a line of the folder picker says; null without one, or where it says nothing.
Json PickerText(HWND picker, int id) {
  const HWND part = GetDlgItem(picker, id);
  WCHAR text[1024] = {};
  if (!part || GetWindowTextW(part, text, 1024) == 0) return nullptr;
  return vanta::ToUtf8(text);
}

Json PickerOf(const OpenWindow* front) {
  if (!front || front->kind != WindowKind::Folder) return nullptr;
  return {{"path", PickerText(front->handle, winhost::kFolderLine)},
          {"notice", PickerText(front->handle, winhost::kFolderNotice)}};
}

Json ControlsOf(const OpenWindow* window) {
  Json controls = Json::object();
  for (lumo::ControlBase* const control : NamedControls(window ? window->skinned->Root() : nullptr)) {
    controls[vanta::ToUtf8(control->Name())] = StateOf(control);
  }
  return controls;
}

Json RectOf(HWND window) {
  RECT place = {};
  GetWindowRect(window, &place);
  return {place.left, place.top, place.right, place.bottom};
}

}  // namespace

Json Look() {
  const std::vector<OpenWindow> windows = OpenWindows();
  const auto first = [&](auto fits) {
    const auto found = std::ranges::find_if(windows, fits);
    return found == windows.end() ? nullptr : &*found;
  };
  const OpenWindow* const front = windows.empty() ? nullptr : &windows.front();
  const OpenWindow* const setup = first([](const OpenWindow& each) { return each.kind == WindowKind::Setup; });
  const OpenWindow* const message = first([](const OpenWindow& each) { return each.kind == WindowKind::Message; });
  const OpenWindow* const skinned = first([](const OpenWindow& each) { return each.skinned != nullptr; });
  return {{"window", front ? Json(NameOf(front->kind)) : Json()},
          {"rect", front ? RectOf(front->handle) : Json()},
          {"active", front && GetForegroundWindow() == front->handle},
          {"minimised", front && IsIconic(front->handle) != FALSE},
          {"page", PageOf(setup)},
          {"tip", TipOf(setup)},
          {"message", TextOf(Find(message, TEXT("lb_text")))},
          {"progress", ProgressOf(setup)},
          {"picker", PickerOf(front)},
          {"focus", FocusOf(skinned)},
          {"controls", ControlsOf(skinned)}};
}

Json NothingSeen() {
  return {{"window", nullptr}, {"rect", nullptr},  {"active", false},           {"minimised", false},
          {"page", nullptr},   {"tip", nullptr},   {"message", nullptr},        {"progress", nullptr},
          {"picker", nullptr}, {"focus", nullptr}, {"controls", Json::object()}};
}

}  // namespace vantakit
