// The system's folder picker: the file dialog that Vista brought, and the tree of the versions before it.
#include "install/directories.h"

#include "base/com_ptr.h"
#include "base/late_function.h"
#include "base/paths.h"
#include "base/unique.h"
#include "report/probes/os_version.h"

#include <shlobj.h>
#include <shobjidl.h>

namespace vanta {
namespace {

using UniqueTaskText = Unique<LPWSTR, &CoTaskMemFree>;
using UniqueItemList = Unique<LPITEMIDLIST, &CoTaskMemFree>;

constexpr WCHAR kTitle[] = TEXT("选择文件夹");

constinit LateFunction<HRESULT(WINAPI*)(PCWSTR, IBindCtx*, REFIID, void**)> g_create_item(
    TEXT("shell32.dll"), "SHCreateItemFromParsingName");

ComPtr<IShellItem> FolderItem(int id) {
  ComPtr<IShellItem> item;
  const String path = GetSpecialFolder(id, false);
  const auto create = g_create_item.Get();
  if (!path.empty() && create) create(path.c_str(), nullptr, IID_IShellItem, item.PutVoid());
  return item;
}

// False when the dialog would pick files. Its title and the folder that it opens in are conveniences: it is of use
// without them.
bool Prepare(IFileOpenDialog* dialog, int id) {
  FILEOPENDIALOGOPTIONS options = 0;
  if (FAILED(dialog->GetOptions(&options)) || FAILED(dialog->SetOptions(options | FOS_PICKFOLDERS))) return false;
  dialog->SetTitle(kTitle);
  if (const ComPtr<IShellItem> folder = FolderItem(id)) dialog->SetDefaultFolder(folder.Get());
  return true;
}

String FileSystemPath(IShellItem* item) {
  UniqueTaskText path;
  if (FAILED(item->GetDisplayName(SIGDN_FILESYSPATH, path.Put())) || !path) return {};
  return path.Get();
}

String ChooseInFileDialog(HWND owner, int id) {
  ComPtr<IFileOpenDialog> dialog;
  ComPtr<IShellItem> chosen;
  if (FAILED(CoCreateInstance(CLSID_FileOpenDialog, nullptr, CLSCTX_INPROC_SERVER, IID_IFileOpenDialog,
                              dialog.PutVoid()))) {
    return {};
  }
  if (!Prepare(dialog.Get(), id)) return {};
  if (FAILED(dialog->Show(owner)) || FAILED(dialog->GetResult(chosen.Put()))) return {};
  return FileSystemPath(chosen.Get());
}

// This dialog has no folder to open in; it begins at the desktop.
String ChooseInTree(HWND owner) {
  WCHAR name[MAX_PATH] = {}, path[MAX_PATH] = {};
  BROWSEINFOW browse = {};
  browse.hwndOwner = owner;
  browse.pszDisplayName = name;
  browse.ulFlags = BIF_RETURNONLYFSDIRS | BIF_DONTGOBELOWDOMAIN;
  const UniqueItemList chosen(SHBrowseForFolderW(&browse));
  if (!chosen || !SHGetPathFromIDListW(chosen.Get(), path)) return {};
  return path;
}

}  // namespace

String ChooseFolder(HWND owner, int id) {
  return IsOsAtLeast(OsVista) ? ChooseInFileDialog(owner, id) : ChooseInTree(owner);
}

}  // namespace vanta
