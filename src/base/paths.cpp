#include "base/paths.h"

#include <shlobj.h>
#include <shlwapi.h>

namespace vanta {
namespace {

// The path functions write into buffers of MAX_PATH and take terminated texts.
bool Fits(StringView text) { return text.size() < MAX_PATH && text.find(WCHAR{0}) == StringView::npos; }

}  // namespace

String JoinPath(StringView folder, StringView name) {
  if (!Fits(folder) || !Fits(name)) return {};
  WCHAR joined[MAX_PATH] = {};
  if (!PathCombineW(joined, String(folder).c_str(), String(name).c_str())) return {};
  return joined;
}

String ParentPath(StringView path) {
  if (!Fits(path)) return {};
  WCHAR buffer[MAX_PATH] = {};
  path.copy(buffer, path.size());
  PathRemoveFileSpecW(buffer);
  return buffer;
}

String FileNameOf(StringView path) {
  const size_t separator = path.find_last_of(TEXT("\\/"));
  return String(path.substr(separator == StringView::npos ? 0 : separator + 1));
}

bool PathExists(const String& path) { return !path.empty() && PathFileExistsW(path.c_str()); }

bool FileExists(const String& path) {
  const DWORD attributes = path.empty() ? INVALID_FILE_ATTRIBUTES : GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool DirectoryExists(const String& path) { return !path.empty() && PathIsDirectoryW(path.c_str()); }

String ModulePath() {
  WCHAR path[MAX_PATH] = {};
  // Windows XP does not terminate a path that it cuts.
  const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
  return String(path, length < MAX_PATH ? length : MAX_PATH - 1);
}

String ModuleDirectory() { return ParentPath(ModulePath()); }

String GetSpecialFolder(int id, bool create) {
  WCHAR path[MAX_PATH] = {};
  const int folder = create ? id | CSIDL_FLAG_CREATE : id;
  return SHGetFolderPathW(nullptr, folder, nullptr, SHGFP_TYPE_CURRENT, path) == S_OK ? String(path) : String();
}

bool MakeDirectories(const String& path) {
  if (path.empty()) return false;
  SHCreateDirectory(nullptr, path.c_str());
  return DirectoryExists(path);
}

}  // namespace vanta
