#include <unistd.h>
#include <windows.h>

#include <algorithm>
#include <mutex>
#include <string>
#include <vector>

#include "winhost/kernel/file_system.h"
#include "winhost/kernel/object.h"
#include "winhost/kernel/wildcard.h"
#include "winhost/machine/faults.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

FILETIME ToFileTime(std::uint64_t time) { return {static_cast<DWORD>(time), static_cast<DWORD>(time >> 32)}; }

void Fill(std::u16string_view name, const FileStat& stat, LPWIN32_FIND_DATAW data) {
  *data = {};
  data->dwFileAttributes = stat.attributes;
  data->ftCreationTime = ToFileTime(stat.creation);
  data->ftLastAccessTime = ToFileTime(stat.access);
  data->ftLastWriteTime = ToFileTime(stat.modification);
  data->nFileSizeHigh = static_cast<DWORD>(stat.size >> 32);
  data->nFileSizeLow = static_cast<DWORD>(stat.size);
  std::copy_n(name.data(), std::min<std::size_t>(name.size(), MAX_PATH - 1), data->cFileName);
}

// The names that matched when the search began; what vanished meanwhile is passed over.
class Search final : public KernelObject {
 public:
  Search(std::shared_ptr<Directory> folder, std::u16string_view pattern) : folder_(std::move(folder)) {
    std::vector<std::string> on_disk;
    if (folder_->parent()) on_disk = {".", ".."};
    ReadNames(folder_->fd(), &on_disk);
    for (std::string& name : on_disk) {
      std::u16string wide = Wide(name);
      if (MatchesWildcard(pattern, wide)) names_.push_back({Upcase(wide), std::move(wide), std::move(name)});
    }
    std::stable_sort(names_.begin(), names_.end(), [](const Name& a, const Name& b) { return a.upcased < b.upcased; });
  }

  bool Next(LPWIN32_FIND_DATAW data) {
    std::scoped_lock lock(lock_);
    while (next_ < names_.size()) {
      const Name& name = names_[next_++];
      FileStat stat;
      const std::string path = folder_->linux_path() + "/" + name.on_disk;
      if (!ReadFileStat({-1, path.c_str()}, &stat)) continue;
      Fill(name.wide, stat, data);
      return true;
    }
    return false;
  }

 private:
  struct Name {
    std::u16string upcased, wide;
    std::string on_disk;
  };
  std::shared_ptr<Directory> folder_;
  std::vector<Name> names_;
  std::size_t next_ = 0;
  std::mutex lock_;
};

struct Pattern {
  std::u16string folder;
  std::u16string name;
};

// A search pattern keeps the dots at its end, which mean something there, so it is cut before paths are normalised.
DWORD SplitPattern(std::u16string_view text, Pattern* pattern) {
  const std::size_t cut = text.find_last_of(u"\\/:");
  pattern->name = cut == text.npos ? text : text.substr(cut + 1);
  pattern->folder = cut == text.npos ? std::u16string(u".") : std::u16string(text.substr(0, cut + 1));
  if (pattern->folder == u"\\\\?\\") return ERROR_INVALID_NAME;
  return pattern->name.empty() ? ERROR_FILE_NOT_FOUND : 0;
}

DWORD FindWild(const Pattern& pattern, std::shared_ptr<Search>* search) {
  FileSystem& files = FileSystem::Current();
  // Asking for a name below the folder makes the file system hand out the folder itself.
  const bool ends = pattern.folder.back() == u'\\' || pattern.folder.back() == u'/' || pattern.folder.back() == u':';
  Place place;
  const DWORD error = files.LocateText(pattern.folder + (ends ? u"x" : u"\\x"), &place, {32767, ERROR_PATH_NOT_FOUND});
  if (error != 0) return error;
  *search = std::make_shared<Search>(place.folder, pattern.name);
  return 0;
}

DWORD FindOne(LPCWSTR path, std::shared_ptr<Search>* search) {
  FileSystem& files = FileSystem::Current();
  FullPath full;
  if (const DWORD error = files.Parse(path, &full)) return error;
  if (full.kind == FullPath::Kind::Device || full.IsRoot()) return ERROR_FILE_NOT_FOUND;
  Place place;
  if (const DWORD error = files.Locate(full, &place)) return error;
  FileStat stat;
  if (const DWORD error = files.Stat(&place, &stat)) return error;
  *search = std::make_shared<Search>(place.folder, Wide(place.on_disk));
  return 0;
}

DWORD Find(LPCWSTR text, std::shared_ptr<Search>* search) {
  Pattern pattern;
  if (*text == 0) return ERROR_PATH_NOT_FOUND;
  if (const DWORD error = SplitPattern(text, &pattern)) return error;
  return pattern.name.find_first_of(u"*?") != pattern.name.npos ? FindWild(pattern, search) : FindOne(text, search);
}

}  // namespace
}  // namespace winhost

HANDLE FindFirstFileW(LPCWSTR pattern, LPWIN32_FIND_DATAW data) {
  DWORD error = pattern ? winhost::PlannedFault("FindFirstFileW", pattern).value_or(0) : DWORD{ERROR_PATH_NOT_FOUND};
  std::shared_ptr<winhost::Search> search;
  if (error == 0) error = winhost::Find(pattern, &search);
  if (error == 0 && !search->Next(data)) error = ERROR_FILE_NOT_FOUND;
  if (error == 0) return winhost::MakeHandle(std::move(search));
  SetLastError(error);
  return INVALID_HANDLE_VALUE;
}

BOOL FindNextFileW(HANDLE find, LPWIN32_FIND_DATAW data) {
  if (const auto error = winhost::PlannedFault("FindNextFileW")) {
    SetLastError(*error);
    return FALSE;
  }
  const auto search = winhost::ObjectAs<winhost::Search>(find);
  const bool found = search && search->Next(data);
  if (!found) SetLastError(search ? ERROR_NO_MORE_FILES : ERROR_INVALID_HANDLE);
  return found;
}

BOOL FindClose(HANDLE find) {
  if (winhost::ObjectAs<winhost::Search>(find)) return CloseHandle(find);
  SetLastError(ERROR_INVALID_HANDLE);
  return FALSE;
}
