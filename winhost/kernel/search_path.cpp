#include "winhost/kernel/search_path.h"

#include <windows.h>

#include <algorithm>
#include <memory>
#include <mutex>

#include "winhost/kernel/loader_exports.h"
#include "winhost/kernel/paths.h"
#include "winhost/kernel/program.h"
#include "winhost/machine/faults.h"
#include "winhost/machine/machine.h"

namespace winhost {
namespace {

constexpr DWORD kSearchFlags = LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_APPLICATION_DIR |
                               LOAD_LIBRARY_SEARCH_USER_DIRS | LOAD_LIBRARY_SEARCH_SYSTEM32 |
                               LOAD_LIBRARY_SEARCH_DEFAULT_DIRS;
constexpr DWORD kDefaultFlags = kSearchFlags & ~DWORD{LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR};
constexpr DWORD kOtherFlags = DONT_RESOLVE_DLL_REFERENCES | LOAD_LIBRARY_AS_DATAFILE | LOAD_WITH_ALTERED_SEARCH_PATH |
                              LOAD_LIBRARY_AS_IMAGE_RESOURCE | LOAD_LIBRARY_AS_DATAFILE_EXCLUSIVE;

struct Directories {
  std::mutex lock;
  DWORD default_flags = 0;
  std::vector<std::unique_ptr<std::u16string>> added;  // an entry's address is its cookie
};

Directories& TheDirectories() {
  static auto* directories = new Directories;
  return *directories;
}

std::u16string ProgramFolder() {
  const std::u16string path = ProgramPath();
  return path.substr(0, path.rfind(u'\\'));
}

bool IsAbsolute(std::u16string_view path) {
  return path.starts_with(u"\\\\") || (path.size() >= 3 && path[1] == u':' && path[2] == u'\\');
}

BOOL Fail(DWORD error) {
  SetLastError(error);
  return FALSE;
}

BOOL WINAPI SetDefaultDirectories(DWORD flags) {
  if (const auto error = PlannedFault("SetDefaultDllDirectories")) return Fail(*error);
  if (flags == 0 || (flags & ~kDefaultFlags)) return Fail(ERROR_INVALID_PARAMETER);
  Directories& directories = TheDirectories();
  std::scoped_lock lock(directories.lock);
  directories.default_flags = flags;
  return TRUE;
}

DLL_DIRECTORY_COOKIE WINAPI AddDirectory(LPCWSTR path) {
  DWORD error = path && IsAbsolute(path) ? ERROR_SUCCESS : ERROR_INVALID_PARAMETER;
  if (!error) error = PlannedFault("AddDllDirectory", path).value_or(ERROR_SUCCESS);
  if (!error) {
    const auto folder = LinuxPath(path);
    std::error_code ignored;
    if (!folder || !std::filesystem::is_directory(*folder, ignored)) error = ERROR_FILE_NOT_FOUND;
  }
  if (error) {
    Fail(error);
    return nullptr;
  }
  Directories& directories = TheDirectories();
  std::scoped_lock lock(directories.lock);
  return directories.added.emplace_back(std::make_unique<std::u16string>(path)).get();
}

BOOL WINAPI RemoveDirectoryCookie(DLL_DIRECTORY_COOKIE cookie) {
  Directories& directories = TheDirectories();
  std::scoped_lock lock(directories.lock);
  const auto removed = std::erase_if(directories.added, [&](const auto& folder) { return folder.get() == cookie; });
  return removed ? TRUE : Fail(ERROR_INVALID_PARAMETER);
}

const BuiltInExport kRows[] = {
    {"kernel32.dll", "SetDefaultDllDirectories", AsExport(&SetDefaultDirectories),
     [](const Facts& facts) { return facts.AtLeast(6, 1); }},
    {"kernel32.dll", "AddDllDirectory", AsExport(&AddDirectory),
     [](const Facts& facts) { return facts.AtLeast(6, 1); }},
    {"kernel32.dll", "RemoveDllDirectory", AsExport(&RemoveDirectoryCookie),
     [](const Facts& facts) { return facts.AtLeast(6, 1); }},
    {"kernel32.dll", "LoadLibraryExW", AsExport(&LoadLibraryExW), nullptr},
};

}  // namespace

std::span<const BuiltInExport> LoaderExports() { return kRows; }

bool HasSearchFlags() { return Machine::Current().facts().AtLeast(6, 1); }

std::vector<std::u16string> SearchFolders(DWORD flags) {
  Directories& directories = TheDirectories();
  std::scoped_lock lock(directories.lock);
  DWORD where = flags & kSearchFlags;
  if (!where) where = directories.default_flags;
  if (where & LOAD_LIBRARY_SEARCH_DEFAULT_DIRS) where |= kDefaultFlags;
  std::vector<std::u16string> folders;
  if (!where || (where & LOAD_LIBRARY_SEARCH_APPLICATION_DIR)) folders.push_back(ProgramFolder());
  if (where & LOAD_LIBRARY_SEARCH_USER_DIRS) {
    for (const auto& folder : directories.added) folders.push_back(*folder);
  }
  if (!where || (where & LOAD_LIBRARY_SEARCH_SYSTEM32)) folders.emplace_back(kSystemFolder);
  if (!where) {
    folders.emplace_back(u"C:\\Windows");
    folders.push_back(CurrentDirectory());
  }
  return folders;
}

DWORD CheckLoadFlags(std::u16string_view name, DWORD flags) {
  const DWORD search = flags & kSearchFlags;
  if (flags & ~(kSearchFlags | kOtherFlags)) return ERROR_INVALID_PARAMETER;
  if (search && !HasSearchFlags()) return ERROR_INVALID_PARAMETER;
  if (search && (flags & LOAD_WITH_ALTERED_SEARCH_PATH)) return ERROR_INVALID_PARAMETER;
  if ((search & LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR) && !IsAbsolute(name)) return ERROR_INVALID_PARAMETER;
  return ERROR_SUCCESS;
}

}  // namespace winhost
