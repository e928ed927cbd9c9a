#include "tools/vantakit/walk/open_windows.h"

#include <unistd.h>

#include <optional>

#include "base/text.h"
#include "app/install_state.h"
#include "lumo/controls/box_base.h"
#include "lumo/core/window.h"
#include "winhost/window/window_table.h"

namespace vantakit {
namespace {

struct Row {
  const WCHAR* class_name;
  WindowKind kind;
  const char* name;
};

constexpr Row kRows[] = {
    {vanta::kSetupWindowClass, WindowKind::Setup, "SetupWnd"},
    {TEXT("VantaPictorMessageBox_Class"), WindowKind::Message, "MessageWnd"},
    {TEXT("#32770"), WindowKind::Folder, "folder"},
};

std::optional<WindowKind> KindOfWindow(const winhost::WindowInfo& info) {
  for (const Row& row : kRows) {
    if (info.class_name == row.class_name) return row.kind;
  }
  return std::nullopt;
}

std::vector<winhost::WindowInfo> Mine() {
  return winhost::WindowTable::Current()->List(
      [](const winhost::WindowInfo& info) { return info.process == getpid() && info.top_level(); });
}

void Collect(lumo::ControlBase* control, std::vector<lumo::ControlBase*>* named) {
  if (!control->Name().empty()) named->push_back(control);
  const lumo::BoxBase* const box = control->AsBox();
  if (!box) return;
  for (lumo::ControlBase* const child : box->Children()) Collect(child, named);
}

}  // namespace

const char* NameOf(WindowKind kind) {
  for (const Row& row : kRows) {
    if (row.kind == kind) return row.name;
  }
  return "";
}

std::vector<OpenWindow> OpenWindows() {
  std::vector<OpenWindow> open;
  for (const winhost::WindowInfo& info : Mine()) {
    const auto kind = KindOfWindow(info);
    if (!kind || !info.shown()) continue;
    auto* const skinned = *kind == WindowKind::Folder
                              ? nullptr
                              : reinterpret_cast<lumo::Window*>(GetWindowLongPtrW(info.window, GWLP_USERDATA));
    open.push_back({info.window, *kind, skinned});
  }
  return open;
}

HWND SetupWindow() {
  for (const winhost::WindowInfo& info : Mine()) {
    if (KindOfWindow(info) == WindowKind::Setup) return info.window;
  }
  return nullptr;
}

FoundControl FindNamed(const std::string& name) {
  for (const OpenWindow& window : OpenWindows()) {
    lumo::ControlBase* const control = window.skinned ? window.skinned->FindControl(vanta::FromUtf8(name)) : nullptr;
    if (control) return {window.handle, control};
  }
  return {};
}

std::vector<lumo::ControlBase*> NamedControls(lumo::ControlBase* root) {
  std::vector<lumo::ControlBase*> named;
  if (root) Collect(root, &named);
  return named;
}

}  // namespace vantakit
