#include <shlobj.h>
#include <windows.h>

#include <algorithm>

#include "winhost/machine/faults.h"
#include "winhost/machine/text.h"
#include "winhost/shell/folder_layout.h"

namespace {

using winhost::Machine;

bool Present(const std::u16string& path, bool create) {
  if (PathIsDirectoryW(path.c_str())) return true;
  return create && SHCreateDirectory(nullptr, path.c_str()) == ERROR_SUCCESS;
}

HRESULT Find(int csidl, LPWSTR result) {
  const char* name = winhost::FolderName(csidl & ~CSIDL_FLAG_MASK);
  if (!name) return E_INVALIDARG;
  if (const auto error = winhost::PlannedFault("SHGetFolderPathW", winhost::Wide(name))) {
    return static_cast<HRESULT>(*error);
  }
  winhost::EnsureStandardFolders();
  const std::u16string path = *FolderPath(Machine::Current().facts(), csidl & ~CSIDL_FLAG_MASK);
  if (path.empty() || path.size() >= MAX_PATH) return E_FAIL;
  const bool unchecked = (csidl & CSIDL_FLAG_DONT_VERIFY) != 0;
  if (!unchecked && !Present(path, (csidl & CSIDL_FLAG_CREATE) != 0)) return E_FAIL;
  std::copy_n(path.c_str(), path.size() + 1, result);
  return S_OK;
}

}  // namespace

HRESULT SHGetFolderPathW(HWND, int csidl, HANDLE, DWORD flags, LPWSTR path) {
  if (!path) return E_INVALIDARG;
  *path = 0;
  if (flags != SHGFP_TYPE_CURRENT && flags != SHGFP_TYPE_DEFAULT) return E_INVALIDARG;
  const DWORD last_error = GetLastError();
  const HRESULT result = Find(csidl, path);
  SetLastError(last_error);
  return result;
}

BOOL SHGetSpecialFolderPathW(HWND owner, LPWSTR path, int csidl, BOOL create) {
  const int id = (csidl & ~CSIDL_FLAG_MASK) | (create ? CSIDL_FLAG_CREATE : 0);
  return SUCCEEDED(SHGetFolderPathW(owner, id, nullptr, SHGFP_TYPE_CURRENT, path));
}
