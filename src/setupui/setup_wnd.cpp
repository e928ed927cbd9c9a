#include "setupui/setup_wnd.h"

#include "app/install_state.h"
#include "app/option_store.h"
#include "app/setup_driver.h"
#include "base/deployment.h"
#include "install/directories.h"
#include "install/payload.h"
#include "install/version.h"
#include "lumo/controls/control_base.h"
#include "lumo/controls/control_interfaces.h"
#include "setupui/setup_window.h"
#include "setupui/string_table.h"

#include <shellapi.h>
#include <shlobj.h>

namespace vanta {
namespace {

constexpr WORD kIconResource = 201;
constexpr UINT_PTR kTipTimer = 1000;
constexpr UINT kTipTime = 3000;  // ms

HANDLE LoadOwnIcon(int width_metric, int height_metric) {
  return LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(kIconResource), IMAGE_ICON,
                    GetSystemMetrics(width_metric), GetSystemMetrics(height_metric), LR_SHARED);
}

}  // namespace

HWND CreateSetupWindow() { return OpenSkinWindow(TEXT("SetupWnd"), new SetupWnd, nullptr, TEXT("")); }

void SetupWnd::AdjustClass(WNDCLASSEXW* window_class) { window_class->lpszClassName = kSetupWindowClass; }

void SetupWnd::OnCreate(HWND window) {
  SkinWindow::OnCreate(window);
  if (!FindKeyControls()) return PostClose();
  SetIcons();
  pg_insting_->SetMax(100);
  pg_insting_->SetValue(0);
  BindButtons();
  ShowFolder();
  ShowFirstPage();
  CenterWindow();
  ShowWindow(window, SW_SHOW);
}

bool SetupWnd::FindKeyControls() {
  lumo::ControlBase* const pages = Find(TEXT("tb_bottom"));
  lumo::ControlBase* const text = Find(TEXT("lb_insting"));
  lumo::ControlBase* const bar = Find(TEXT("pg_insting"));
  if (!pages || !text || !bar) return false;
  tb_bottom_ = pages->AsTabBox();
  lb_insting_ = text->AsLabel();
  pg_insting_ = bar->AsProgress();
  return tb_bottom_ && lb_insting_ && pg_insting_;
}

void SetupWnd::SetIcons() {
  const HANDLE big = LoadOwnIcon(SM_CXICON, SM_CYICON);
  const HANDLE small_one = LoadOwnIcon(SM_CXSMICON, SM_CYSMICON);
  SendMessageW(m_hWnd, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(big));
  SendMessageW(m_hWnd, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(small_one));
}

void SetupWnd::BindButtons() {
  BindClick(TEXT("btn_instok"), &SetupWnd::Close);
  BindClick(TEXT("btn_instexit"), &SetupWnd::Close);
  BindClick(TEXT("btn_inst"), &SetupWnd::Install);
  BindClick(TEXT("btn_browse"), &SetupWnd::Browse);
  BindClick(TEXT("btn_use_agreement"), &SetupWnd::OpenAgreement);
  BindClick(TEXT("btn_privacy"), &SetupWnd::OpenPrivacy);
}

void SetupWnd::BindClick(const WCHAR* name, void (SetupWnd::*action)()) {
  Bind(name, lumo::EventClick, [this, action](lumo::_Msg&) { (this->*action)(); });
}

void SetupWnd::ShowFirstPage() {
  if (IsAuto()) return StartInstallation();
  if (isLowerSetup()) {
    SelectPage(TEXT("vb_noinst"));
    return ShowTip(TEXT("STRID_PICTOR_NO_INST"), 0);
  }
  if (IsInstalled()) return StartInstallation();
  SelectPage(TEXT("vb_inst"));
}

LRESULT SetupWnd::ProcessMessage(UINT message, WPARAM wParam, LPARAM lParam, bool* handled) {
  switch (message) {
    case WM_DESTROY:
      PostQuitMessage(0);
      return 0;
    case WM_TIMER:
      *handled = wParam == kTipTimer;
      if (*handled) HideTip();
      return 0;
    case WM_SETUP_PROGRESS:
      *handled = true;
      ShowProgress(static_cast<int>(lParam));
      return 0;
    case WM_SETUP_STATUS:
      *handled = true;
      OnStatus(lParam);
      return 0;
    default:
      return 0;
  }
}

void SetupWnd::Install() {
  if (!IsSelected(TEXT("cb_agree"))) return ShowTip(TEXT("STRID_PICTOR_TIPS_USER_AGREE"), kTipTime);
  if (IsSelected(TEXT("cb_default"))) {
    SetOption(TEXT("assoc"), TEXT(""));
  } else {
    RemoveOption(TEXT("assoc"));
  }
  StartInstallation();
}

void SetupWnd::StartInstallation() {
  if (runInstaller()) return;
  // Of a payload that is there but is no archive nobody else tells.
  if (IsPayloadUnreadable()) {
    PostMessageW(m_hWnd, WM_SETUP_STATUS, 0, static_cast<LPARAM>(SetupStatus::ErrorEmbeddedFile));
  }
}

void SetupWnd::Browse() {
  const lumo::WeakRef<lumo::lumowin> alive(this);
  const String path = ChooseFolder(m_hWnd, CSIDL_RECENT);
  if (!alive) return;
  String directory;
  const DirectoryCheck check = CheckChosenDirectory(path, &directory);
  if (check == DirectoryCheck::Accepted) {
    SetInstallDirectory(directory.c_str());
    ShowFolder();
  } else if (check != DirectoryCheck::Ignored) {
    ShowTip(DirectoryTip(check), kTipTime);
  }
}

void SetupWnd::OpenAgreement() { OpenPage(TEXT("/product_protocol.html")); }

void SetupWnd::OpenPrivacy() { OpenPage(TEXT("/user_protocol.html")); }

void SetupWnd::OpenPage(StringView path) {
  const String address = TEXT("https://") + GetDeployment().agreement_host + String(path);
  ShellExecuteW(m_hWnd, TEXT("open"), address.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

void SetupWnd::ShowFolder() {
  lumo::ControlBase* const folder = Find(TEXT("lb_folder"));
  if (!folder) return;
  const String directory = GetInstallDirectory();
  SetText(folder, directory);
  folder->SetToolTipText(directory);
}

void SetupWnd::ShowTip(const WCHAR* key, UINT milliseconds) {
  lumo::ControlBase* const tip = Find(TEXT("lb_tips"));
  if (!tip) return;
  SetText(tip, GetString(key));
  tip->SetVisible(true);
  if (milliseconds) {
    SetTimer(m_hWnd, kTipTimer, milliseconds, nullptr);
  } else {
    KillTimer(m_hWnd, kTipTimer);
  }
}

void SetupWnd::HideTip() {
  KillTimer(m_hWnd, kTipTimer);
  if (lumo::ControlBase* const tip = Find(TEXT("lb_tips"))) tip->SetVisible(false);
}

bool SetupWnd::IsSelected(const WCHAR* name) const {
  lumo::ControlBase* const control = Find(name);
  const lumo::ICheckBox* const box = control ? control->AsCheckBox() : nullptr;
  return box && box->IsSelected();
}

void SetupWnd::SelectPage(const WCHAR* name) { tb_bottom_->SelectPage(StringView(name)); }

void SetupWnd::EnableClosing(bool enabled) {
  if (lumo::ControlBase* const close = Find(TEXT("__close"))) close->SetEnabled(enabled);
}

}  // namespace vanta
