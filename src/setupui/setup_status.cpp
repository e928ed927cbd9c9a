// What the setup window makes of the installation's reports.
#include "lumo/controls/control_base.h"
#include "lumo/controls/control_interfaces.h"
#include "setupui/message_window.h"
#include "setupui/progress_text.h"
#include "setupui/setup_wnd.h"
#include "setupui/string_table.h"

namespace vanta {

struct SetupWnd::Reaction {
  SetupStatus status;
  const WCHAR* message;  // string-table key of the error message; null shows none
  void (SetupWnd::*then)();
};

// clang-format off
constexpr SetupWnd::Reaction SetupWnd::kReactions[] = {
    {SetupStatus::Started,             nullptr,                                            &SetupWnd::OnStarted},
    {SetupStatus::Finished,            nullptr,                                            &SetupWnd::OnFinished},
    {SetupStatus::Failed,              nullptr,                                            &SetupWnd::OnFailed},
    {SetupStatus::ErrorUnzip,          TEXT("STRID_PICTOR_INST_ERROR_UNZIP"),              &SetupWnd::Close},
    {SetupStatus::ErrorCreateDir,      TEXT("STRID_PICTOR_INST_ERROR_CREATE_DIR"),         &SetupWnd::GoBack},
    {SetupStatus::ErrorWriteFile,      TEXT("STRID_PICTOR_INST_ERROR_WRITE_FILE"),         &SetupWnd::GoBack},
    {SetupStatus::ErrorUninstallEntry, nullptr,                                            &SetupWnd::Close},
    {SetupStatus::ErrorAppPaths,       nullptr,                                            &SetupWnd::Close},
    {SetupStatus::ErrorNoEmbeddedFile, TEXT("STRID_PICTOR_INST_ERROR_NO_EMBEDDED_FILE"),   &SetupWnd::Close},
    {SetupStatus::ErrorEmbeddedFile,   TEXT("STRID_PICTOR_INST_ERROR_EMBEDDED_FILE"),      &SetupWnd::Close},
};
// clang-format on

void SetupWnd::OnStatus(LPARAM status) {
  if (!pg_insting_) return;
  for (const Reaction& reaction : kReactions) {
    if (static_cast<LPARAM>(reaction.status) != status) continue;
    if (reaction.message) {
      failure_told_ = true;
      const lumo::WeakRef<lumo::lumowin> alive(this);
      const String text = GetString(reaction.message);
      if (!text.empty()) ShowMessage({TEXT(""), text, GetString(TEXT("STRID_PICTOR_KNOWN")), TRUE, m_hWnd});
      if (!alive) return;
    }
    return (this->*reaction.then)();
  }
}

void SetupWnd::ShowProgress(int percent) {
  if (!pg_insting_) return;
  pg_insting_->SetValue(percent);
  lb_insting_->SetText(ProgressText(GetString(TEXT("STRID_PICTOR_INSTING")), percent));
}

void SetupWnd::OnStarted() {
  failure_told_ = false;
  // A second attempt posts no 0 of its own: what it reports only grows.
  ShowProgress(0);
  SelectPage(TEXT("vb_insting"));
  EnableClosing(false);
}

void SetupWnd::OnFinished() {
  PostClose();
  EnableClosing(true);
}

// After an error of its own the page has already been left.
void SetupWnd::OnFailed() {
  if (!failure_told_) EnableClosing(true);
}

void SetupWnd::GoBack() {
  SelectPage(TEXT("vb_inst"));
  EnableClosing(true);
}

}  // namespace vanta
