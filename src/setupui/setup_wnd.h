// The handler behind the setup window. UI thread only; the installer thread speaks to it by posted messages alone.
#pragma once

#include "install/setup_messages.h"
#include "setupui/skin_window.h"

namespace lumo {
class ILabel;
class IProgress;
class ITabBox;
}  // namespace lumo

namespace vanta {

class SetupWnd final : public SkinWindow {
 public:
  void AdjustClass(WNDCLASSEXW* window_class) override;
  void OnCreate(HWND window) override;
  LRESULT ProcessMessage(UINT message, WPARAM wParam, LPARAM lParam, bool* handled) override;

 private:
  struct Reaction;
  static const Reaction kReactions[];

  // Creation (setup_wnd.cpp).
  bool FindKeyControls();
  void SetIcons();
  void BindButtons();
  void BindClick(const WCHAR* name, void (SetupWnd::*action)());
  void ShowFirstPage();

  // What the user does.
  void Close() { PostClose(); }
  void Install();
  void Browse();
  void OpenAgreement();
  void OpenPrivacy();
  void OpenPage(StringView path);

  void StartInstallation();
  void ShowFolder();
  void ShowTip(const WCHAR* key, UINT milliseconds);  // 0: for good
  void HideTip();
  bool IsSelected(const WCHAR* name) const;
  void SelectPage(const WCHAR* name);
  void EnableClosing(bool enabled);

  // What the installation reports (setup_status.cpp).
  void ShowProgress(int percent);
  void OnStatus(LPARAM status);
  void OnStarted();
  void OnFinished();
  void OnFailed();
  void GoBack();

  lumo::ITabBox* tb_bottom_ = nullptr;
  lumo::ILabel* lb_insting_ = nullptr;
  lumo::IProgress* pg_insting_ = nullptr;
  bool failure_told_ = false;  // this attempt has already reported why it failed
};

}  // namespace vanta
