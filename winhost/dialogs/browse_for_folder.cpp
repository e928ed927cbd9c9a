// The folder picker as programs before Vista asked for it.
#include <shlobj.h>
#include <windows.h>

#include <algorithm>

#include "winhost/dialogs/folder_dialog.h"
#include "winhost/machine/faults.h"
#include "winhost/shell/item_lists.h"
#include "winhost/shell/shell_item.h"

namespace winhost {
namespace {

bool Supported(const BROWSEINFOW& browse) {
  constexpr UINT kKnown = BIF_RETURNONLYFSDIRS | BIF_DONTGOBELOWDOMAIN;
  return !browse.pidlRoot && !browse.lpfn && !(browse.ulFlags & ~kKnown);
}

void PutName(const std::u16string& folder, LPWSTR name) {
  const std::u16string text = PlaceName(folder).substr(0, MAX_PATH - 1);
  std::copy_n(text.c_str(), text.size() + 1, name);
}

}  // namespace
}  // namespace winhost

using namespace winhost;

PIDLIST_ABSOLUTE SHBrowseForFolderW(LPBROWSEINFOW browse) {
  if (const auto error = PlannedFault("SHBrowseForFolderW")) {
    SetLastError(*error);
    return nullptr;
  }
  if (!browse || !Supported(*browse)) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return nullptr;
  }
  FolderQuestion question;
  question.owner = browse->hwndOwner;
  question.title = u"浏览文件夹";
  question.instruction = browse->lpszTitle ? browse->lpszTitle : u"";
  question.ok = u"确定";
  std::u16string folder;
  if (FAILED(AskForFolder(question, &folder))) return nullptr;
  const PIDLIST_ABSOLUTE list = MakeIdList(folder);
  if (list && browse->pszDisplayName) PutName(folder, browse->pszDisplayName);
  return list;
}
