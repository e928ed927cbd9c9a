#include "winhost/dialogs/file_open_dialog.h"

#include <shobjidl.h>

#include "winhost/com/object.h"
#include "winhost/dialogs/folder_dialog.h"
#include "winhost/shell/shell_item.h"

namespace winhost {

template <>
inline constexpr std::array kIids<IFileOpenDialog> = {&IID_IFileOpenDialog, &IID_IFileDialog, &IID_IModalWindow};

namespace {

constexpr WCHAR kPick[] = u"选择文件夹";  // the title, unless the program sets one, and the main button

class FileOpenDialog final : public ComObject<IFileOpenDialog> {
 public:
  HRESULT SetOptions(FILEOPENDIALOGOPTIONS options) override {
    if (auto failed = PlannedFailure("IFileDialog::SetOptions")) return *failed;
    options_ = options;
    return S_OK;
  }
  HRESULT GetOptions(FILEOPENDIALOGOPTIONS* options) override {
    if (!options) return E_POINTER;
    if (auto failed = PlannedFailure("IFileDialog::GetOptions")) return *failed;
    *options = options_;
    return S_OK;
  }
  HRESULT SetDefaultFolder(IShellItem* folder) override {
    if (auto failed = PlannedFailure("IFileDialog::SetDefaultFolder")) return *failed;
    start_ = PathOfShellItem(folder);
    return S_OK;
  }
  HRESULT SetTitle(LPCWSTR title) override {
    if (auto failed = PlannedFailure("IFileDialog::SetTitle", title)) return *failed;
    title_ = title ? title : u"";
    return S_OK;
  }
  HRESULT Show(HWND owner) override {
    if (auto failed = PlannedFailure("IModalWindow::Show")) return *failed;
    answer_.clear();
    if (!(options_ & FOS_PICKFOLDERS)) return E_NOTIMPL;
    FolderQuestion question;
    question.owner = owner;
    question.title = title_.empty() ? kPick : title_;
    question.ok = kPick;
    question.start = start_;
    return AskForFolder(question, &answer_);
  }
  HRESULT GetResult(IShellItem** item) override {
    if (!item) return E_POINTER;
    *item = nullptr;
    if (auto failed = PlannedFailure("IFileDialog::GetResult")) return *failed;
    return answer_.empty() ? E_UNEXPECTED : MakeShellItem(answer_, IID_IShellItem, reinterpret_cast<void**>(item));
  }

 private:
  FILEOPENDIALOGOPTIONS options_ = FOS_NOCHANGEDIR | FOS_PATHMUSTEXIST | FOS_FILEMUSTEXIST;
  std::u16string title_, start_;
  std::u16string answer_;  // empty: none
};

}  // namespace

HRESULT MakeDrawnFileOpenDialog(REFIID iid, void** object) { return MakeObject<FileOpenDialog>(iid, object); }

}  // namespace winhost
