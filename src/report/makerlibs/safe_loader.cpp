#include "report/makerlibs/safe_loader.h"

#include "base/paths.h"
#include "base/late_function.h"

namespace vanta {
namespace {

constexpr WCHAR kKernel[] = TEXT("Kernel32.dll");

// Both are found together on Windows 8, and on Vista and 7 with the update that taught the loader its search flags.
constinit LateFunction<void*(WINAPI*)(const WCHAR*)> g_add_dll_directory(kKernel, "AddDllDirectory");
constinit LateFunction<HMODULE(WINAPI*)(const WCHAR*, HANDLE, DWORD)> g_load_library_ex(kKernel, "LoadLibraryExW");

}  // namespace

bool IsFullDrivePath(StringView path) {
  if (path.size() < 4 || path[1] != TEXT(':') || path[2] != TEXT('\\')) return false;
  const WCHAR drive = AsciiLower(path[0]);
  return drive >= TEXT('a') && drive <= TEXT('z');
}

HMODULE LoadLibrarySafely(const String& path) {
  if (!IsFullDrivePath(path)) {
    SetLastError(ERROR_BAD_PATHNAME);
    return nullptr;
  }
  const auto load_library_ex = g_load_library_ex.Get();
  if (g_add_dll_directory.Get() && load_library_ex) {
    return load_library_ex(path.c_str(), nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  }
  return LoadLibraryW(path.c_str());
}

HMODULE LoadSystemLibrary(const WCHAR* name) {
  const StringView plain(name);
  WCHAR folder[MAX_PATH] = {};
  const UINT length = GetSystemDirectoryW(folder, MAX_PATH);
  if (length == 0 || length >= MAX_PATH || plain.empty() || plain.find_first_of(TEXT("\\/:")) != StringView::npos) {
    SetLastError(ERROR_MOD_NOT_FOUND);
    return nullptr;
  }
  return LoadLibrarySafely(JoinPath(folder, plain));
}

}  // namespace vanta
