#include "app/library_search.h"

#include "base/late_function.h"
#include "report/makerlibs/safe_loader.h"

namespace vanta {
namespace {

constexpr DWORD kSearchSystemFolderOnly = 0x800;  // LOAD_LIBRARY_SEARCH_SYSTEM32

constinit LateFunction<BOOL(WINAPI*)(DWORD)> set_dll_directories(TEXT("Kernel32.dll"), "SetDefaultDllDirectories");

// Those of cmake/windows.cmake that are loaded on first use.
constexpr const WCHAR* kDelayedLibraries[] = {
    TEXT("version.dll"), TEXT("psapi.dll"), TEXT("wininet.dll"), TEXT("winmm.dll"),   TEXT("wintrust.dll"),
    TEXT("crypt32.dll"), TEXT("imm32.dll"), TEXT("gdiplus.dll"), TEXT("msimg32.dll"),
};

}  // namespace

void RestrictLibrarySearch() {
  if (const auto call = set_dll_directories.Get(); call && call(kSearchSystemFolderOnly)) return;
  // Windows before 8, without its update: a library that is loaded already is not searched for.
  for (const WCHAR* const name : kDelayedLibraries) LoadSystemLibrary(name);
}

}  // namespace vanta
