#include "setupui/message_window.h"

#include "lumo/controls/control_base.h"
#include "setupui/skin_window.h"

namespace vanta {
namespace {

constexpr const WCHAR* kTitle = TEXT("VantaView");

class MessageWnd final : public SkinWindow {
 public:
  explicit MessageWnd(const MessageRequest& request) : request_(request) {}

  void AdjustClass(WNDCLASSEXW* window_class) override {
    window_class->lpszClassName = TEXT("VantaPictorMessageBox_Class");
  }
  void OnCreate(HWND window) override;
  LRESULT ProcessMessage(UINT message, WPARAM wParam, LPARAM lParam, bool* handled) override;

 private:
  const MessageRequest request_;
};

void MessageWnd::OnCreate(HWND window) {
  SkinWindow::OnCreate(window);
  SetWindowTextW(window, kTitle);
  lumo::ControlBase* const icon = Find(TEXT("ct_icon"));
  if (icon && !request_.icon.empty()) icon->SetBkImage(request_.icon);
  SetText(Find(TEXT("lb_text")), request_.text);
  lumo::ControlBase* const button = Find(TEXT("okbtn"));
  SetText(button, request_.button);
  Bind(button, lumo::EventClick, [this](lumo::_Msg&) { PostClose(kMessageConfirmed); });
  if (button) button->SetFocus();
  CenterWindow();
}

LRESULT MessageWnd::ProcessMessage(UINT message, WPARAM wParam, LPARAM, bool* handled) {
  if (message == WM_KEYDOWN && wParam == VK_ESCAPE) {
    PostClose(kMessageClosed);
    *handled = true;
  }
  // Before the window goes: a disabled owner would not be activated next, but some other program's window.
  if (message == WM_CLOSE && request_.modal) EnableWindow(GetWindow(m_hWnd, GW_OWNER), TRUE);
  return 0;
}

int RunModalLoop() {
  MSG message = {};
  while (const BOOL got = GetMessageW(&message, nullptr, 0, 0)) {
    if (got == -1) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
    if (message.message == WM_CLOSE) return static_cast<int>(message.wParam);
  }
  PostQuitMessage(static_cast<int>(message.wParam));
  return kMessageQuit;
}

int RunModal(HWND window) {
  const HWND owner = GetWindow(window, GW_OWNER);
  ShowWindow(window, SW_SHOWNORMAL);
  if (owner) EnableWindow(owner, FALSE);
  const int result = RunModalLoop();
  if (owner && IsWindow(owner)) {
    EnableWindow(owner, TRUE);
    SetFocus(owner);
  }
  return result;
}

}  // namespace

int ShowMessage(const MessageRequest& request) {
  const HWND window = OpenSkinWindow(TEXT("MessageWnd"), new MessageWnd(request), request.owner, kTitle);
  if (!window) return 0;
  if (request.modal) return RunModal(window);
  ShowWindow(window, SW_SHOW);
  return 0;
}

}  // namespace vanta
