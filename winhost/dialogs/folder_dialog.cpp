#include "winhost/dialogs/folder_dialog.h"

#include "winhost/dialogs/folder_window.h"
#include "winhost/dialogs/modal_loop.h"

namespace winhost {

HRESULT AskForFolder(const FolderQuestion& question, std::u16string* folder) {
  FolderWindow dialog(question);
  if (!dialog.Make()) {
    const DWORD error = GetLastError();
    return error ? HRESULT_FROM_WIN32(error) : E_FAIL;
  }
  const DisabledOwner owner(question.owner);  // usable again before the dialog goes, so that it becomes the active one
  dialog.Present();
  RunModalLoop([&] { return dialog.Ended(); }, [&](const MSG& message) { return dialog.TakeKey(message); });
  if (!dialog.Answer()) return HRESULT_FROM_WIN32(ERROR_CANCELLED);
  *folder = *dialog.Answer();
  return S_OK;
}

}  // namespace winhost
