#include "setupui/skin_window.h"

#include "app/window_registry.h"
#include "lumo/controls/control_base.h"
#include "lumo/controls/control_interfaces.h"
#include "lumo/core/create_window.h"
#include "lumo/core/window_messages.h"

namespace vanta {
namespace {

constexpr DWORD kStyle = WS_POPUP | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | WS_MINIMIZEBOX;

}  // namespace

void SkinWindow::OnCreate(HWND window) {
  lumowin::OnCreate(window);
  RegisterWindow(window);
}

void SkinWindow::OnFinalMessage(HWND window) {
  UnregisterWindow(window);
  lumowin::OnFinalMessage(window);
  delete this;
}

lumo::ControlBase* SkinWindow::Find(const WCHAR* name) const {
  const LRESULT found = SendMessageW(m_hWnd, lumo::kMessageFindControl, 0, reinterpret_cast<LPARAM>(name));
  return found ? reinterpret_cast<lumo::IControl*>(found)->AsControl() : nullptr;
}

void SkinWindow::SetText(lumo::ControlBase* control, StringView text) {
  if (lumo::ILabel* const label = control ? control->AsLabel() : nullptr) label->SetText(text);
}

HWND OpenSkinWindow(const WCHAR* name, SkinWindow* handler, HWND owner, const WCHAR* title) {
  const lumo::WeakRef<lumo::lumowin> alive(handler);
  const String layout = String(name) + TEXT(".xml");
  const HWND window = lumo::CreateSkinWindow(name, layout.c_str(), handler, owner, title, kStyle, 0, nullptr);
  // A creation that failed late has already sent the final message.
  if (!window) delete alive.Get();
  return window;
}

}  // namespace vanta
