// The windows of the walked setup. UI thread only.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace lumo {
class ControlBase;
class Window;
}  // namespace lumo

namespace vantakit {

enum class WindowKind { Setup, Message, Folder };

struct OpenWindow {
  HWND handle;
  WindowKind kind;
  lumo::Window* skinned;  // null for the folder picker
};

const char* NameOf(WindowKind kind);
// Those that are shown, foremost first. Tooltips and shadows are not among them.
std::vector<OpenWindow> OpenWindows();
// The setup's window, shown or not; null when it is gone.
HWND SetupWindow();

// Of the foremost window that has one of that name; null and null for none.
struct FoundControl {
  HWND window = nullptr;
  lumo::ControlBase* control = nullptr;
};
FoundControl FindNamed(const std::string& name);
// Every control with a name below this one and itself, in the layout's order.
std::vector<lumo::ControlBase*> NamedControls(lumo::ControlBase* root);

}  // namespace vantakit
