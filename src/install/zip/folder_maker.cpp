#include "install/zip/folder_maker.h"

namespace vanta {
namespace {

constexpr bool IsSeparator(WCHAR c) { return c == TEXT('\\') || c == TEXT('/'); }

StringView WithoutTrailingSeparators(StringView path) {
  while (!path.empty() && IsSeparator(path.back())) path.remove_suffix(1);
  return path;
}

StringView Parent(StringView path) {
  while (!path.empty() && !IsSeparator(path.back())) path.remove_suffix(1);
  return WithoutTrailingSeparators(path);
}

bool IsRoot(StringView path) { return path.empty() || path.back() == TEXT(':'); }

bool IsFolder(const String& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

// A level that cannot be made is no reason to stop: the server of a network path is none either.
bool MakeMissing(StringView folder) {
  StringView existing = folder;
  while (!IsRoot(existing) && !IsFolder(String(existing))) existing = Parent(existing);
  bool made = true;
  for (size_t length = existing.size(); length < folder.size();) {
    size_t end = length + 1;
    while (end < folder.size() && IsSeparator(folder[end])) ++end;
    while (end < folder.size() && !IsSeparator(folder[end])) ++end;
    const String level(folder.substr(0, end));
    made = CreateDirectoryW(level.c_str(), nullptr) || (GetLastError() == ERROR_ALREADY_EXISTS && IsFolder(level));
    length = end;
  }
  return made;
}

}  // namespace

bool FolderMaker::Ensure(StringView folder) {
  folder = WithoutTrailingSeparators(folder);
  if (IsRoot(folder) || Remembers(folder)) return true;
  last_.clear();
  if (!MakeMissing(folder)) return false;
  last_ = folder;
  return true;
}

bool FolderMaker::Remembers(StringView folder) const {
  return !last_.empty() && last_ == WithoutTrailingSeparators(folder);
}

}  // namespace vanta
