// The machine's drives and folders: from a full Windows path to a place on Linux.
#pragma once

#include <array>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "winhost/kernel/directory.h"
#include "winhost/kernel/file_stat.h"
#include "winhost/kernel/full_path.h"
#include "winhost/kernel/share_table.h"
#include "winhost/machine/machine.h"

namespace winhost {

struct Drive {
  char16_t letter = 0;  // 0: a network share
  std::string linux_path;
  DriveFacts facts;
  std::shared_ptr<Directory> root;  // made on first use
};

// Where a path leads. For a root, `folder` is the root itself and the names are empty.
struct Place {
  std::shared_ptr<Directory> folder;
  std::u16string upcased;  // the name as it is compared
  std::string on_disk;     // its spelling on Linux: the existing one's, or the one it would be made with
  bool missing = false;    // surely not there (as far as this process may know)
  bool IsRoot() const { return upcased.empty(); }
  FileKey Key() const { return folder->KeyOf(upcased); }
  std::string LinuxPath() const;
  std::u16string WindowsPath() const;
};

class FileSystem {
 public:
  // The machine's own; the reference lives as long as the machine.
  static FileSystem& Current();
  explicit FileSystem(Machine& machine);
  ~FileSystem();

  Machine& machine() { return machine_; }
  const std::shared_ptr<ShareTable>& shares() { return shares_; }

  // Finds the folder of the path's last component and that component in it. 0, or ERROR_PATH_NOT_FOUND when a folder
  // on the way is missing, or the network's errors. `sure`: do not trust cached names.
  DWORD Locate(const FullPath& path, Place* place, bool sure = false);
  // The same for the caller's text, against the current directory; `name` is its last component as given.
  // ERROR_INVALID_NAME for devices.
  DWORD LocateText(std::u16string_view text, Place* place, PathLimit limit = {}, std::u16string* name = nullptr);
  DWORD Parse(std::u16string_view text, FullPath* full, PathLimit limit = {});

  // What is at a place. ERROR_FILE_NOT_FOUND when nothing is; the place may be corrected on the way.
  DWORD Stat(Place* place, FileStat* stat);
  // The attributes of what a full path names, by the shortest way; 0 and the attributes, or the error.
  DWORD Attributes(const FullPath& path, DWORD* attributes);
  // The same for a folder that is known by just this spelling; false says nothing.
  bool QuickAttributes(std::u16string_view text, DWORD* attributes);

  // Whether the folder may be changed: 0, ERROR_WRITE_PROTECT (read-only drive) or ERROR_ACCESS_DENIED ("denied").
  DWORD MayChange(const Directory& folder) const;
  DWORD MayChange(const Place& place) const;

  // To be told after each change to a folder's names.
  void Added(const Place& place);
  void Removed(const Place& place);
  // After a folder moved or went: nothing that was known below it holds.
  void ForgetFolders();
  // For a name that proved stale.
  void Forget(const Place& place);

  std::u16string CurrentDirectory();
  void ChangeDirectory(std::u16string path);

  Drive* FindDrive(char16_t letter);
  std::vector<char16_t> DriveLetters();
  // Free bytes; the fact's bound less what writing used, or a figure for a drive without bound.
  std::uint64_t FreeBytes(const Drive& drive) const;
  // False when a bounded drive has no room for that many bytes more; negative gives room back.
  bool TakeBytes(const Drive& drive, std::int64_t bytes);
  bool IsBounded(const Drive& drive) const { return drive.facts.free_bytes.has_value() && drive.letter != 0; }

 private:
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::u16string_view text) const { return HashName(text); }
  };

  bool ParseBelowLast(std::u16string_view text, FullPath* full);
  void LookForOthers();
  std::shared_ptr<Directory> KnownFolder(std::u16string_view path);
  void UseFolder(std::u16string_view path, const std::shared_ptr<Directory>& folder);
  void BoundListings(const Directory& but);
  void DropFolders();
  DWORD FindFolder(std::u16string_view path, const FullPath& full, std::shared_ptr<Directory>* folder);
  DWORD WalkTo(std::u16string_view path, const FullPath& full, std::shared_ptr<Directory>* folder);
  DWORD RootOf(const FullPath& full, std::shared_ptr<Directory>* root);
  DWORD ShareOf(const FullPath& full, Drive** drive);
  void FindName(const std::shared_ptr<Directory>& folder, std::u16string_view name, Place* place, bool sure);
  std::shared_ptr<Directory> OpenFolder(const std::shared_ptr<Directory>& parent, const Place& place);
  bool IsDenied(std::u16string_view path) const;

  Machine& machine_;
  std::shared_ptr<ShareTable> shares_;
  std::vector<std::u16string> denied_;  // upper case
  std::mutex lock_;
  std::array<std::optional<Drive>, 26> drives_;
  std::unordered_map<std::u16string, std::unique_ptr<Drive>> network_;                             // "\\SERVER\SHARE"
  std::unordered_map<std::u16string, std::shared_ptr<Directory>, Hash, std::equal_to<>> folders_;  // upper-case path
  std::u16string last_path_;  // the folder found last, as it was spelt
  std::shared_ptr<Directory> last_folder_;
  std::size_t left_listing_bytes_ = 0;  // of the folders used before, at most; a folder left twice counts twice
  std::uint64_t epoch_ = 1;             // moves when another process changed something
  std::u16string current_directory_;
};

}  // namespace winhost
