// One folder of the machine, kept open, with its names looked up without case.
//
// Which names there are is cached, because Linux cannot look one up without case: as a set that says that a name is not
// there, and for those that were asked for in another case, their spelling. The cache is a hint that is checked:
// against the folder's own time stamps before use, and against the disk whenever a name is used. Time stamps move in
// kernel ticks, so a listing that was read in the tick of a change is read again before a name counts as missing.
#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "winhost/kernel/name_set.h"
#include "winhost/kernel/share_table.h"

namespace winhost {

struct Drive;

// Not locked by itself: FileSystem's lock guards it.
class Directory {
 public:
  // Opens a folder; none with errno set when that fails. `name` is its name in `parent`.
  static std::shared_ptr<Directory> Open(std::shared_ptr<Directory> parent, std::string name, std::u16string path,
                                         std::string linux_path, Drive* drive);
  ~Directory();
  Directory(const Directory&) = delete;
  Directory& operator=(const Directory&) = delete;

  int fd() const { return fd_; }
  Drive& drive() const { return *drive_; }
  const std::u16string& path() const { return path_; }  // "C:\a"
  const std::string& linux_path() const { return linux_path_; }
  const std::shared_ptr<Directory>& parent() const { return parent_; }
  const std::string& name() const { return name_; }
  std::uint32_t attributes() const { return attributes_; }
  std::uint64_t device() const { return device_; }
  std::uint64_t inode() const { return inode_; }
  bool denied() const { return denied_; }
  void set_denied(bool denied) { denied_ = denied; }

  FileKey KeyOf(std::u16string_view upcased_name) const { return {device_, inode_, HashName(upcased_name)}; }

  // Brings the cache in line with the disk. `now` is the monotonic clock in ns; a look younger than two microseconds
  // counts. A new `epoch` says that another process changed something. False: the folder is gone or moved away.
  bool Refresh(std::uint64_t now, std::uint64_t epoch);

  enum class Look { Found, Missing, Unknown };
  // Finds a name without case, as far as is known. Missing was checked against a full listing; Unknown: the exact name
  // is to be tried on disk before Search() is called. `on_disk` stays valid until the next change or search.
  Look Find(std::u16string_view upcased_name, const std::string** on_disk) const;
  // Looks among the names on disk, and remembers the spelling. False when there is none, or the folder is unreadable.
  bool Search(std::u16string_view upcased_name, const std::string** on_disk);
  // Reads them anew before a name counts as missing, when the last reading may have been overtaken.
  bool RelistIfDoubtful();

  // This process's own changes, made under the lock.
  void Added(std::u16string_view upcased_name);
  void Removed(std::u16string_view upcased_name);
  void Forget();

  std::size_t listing_bytes() const { return listed_names_.bytes(); }

 private:
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::u16string_view text) const { return HashName(text); }
  };
  struct Stamp {
    timespec modification{};
    timespec change{};
    bool operator==(const Stamp& other) const {
      return modification.tv_sec == other.modification.tv_sec && modification.tv_nsec == other.modification.tv_nsec &&
             change.tv_sec == other.change.tv_sec && change.tv_nsec == other.change.tv_nsec;
    }
  };
  static Stamp StampOf(const struct stat& stat) { return {stat.st_mtim, stat.st_ctim}; }

  Directory() = default;
  bool IsWhereItWas() const;
  void TakeStamp(const struct stat& stat, std::int64_t real_ns);
  bool IsOwnChange(const Stamp& stamp) const;
  void LoadAttributes();
  // Reads the names, if they are not known. False when the folder cannot be read.
  bool List();
  void ForgetSpelling(std::u16string_view upcased_name);

  int fd_ = -1;
  std::shared_ptr<Directory> parent_;
  std::string name_;
  std::u16string path_;
  std::string linux_path_;
  Drive* drive_ = nullptr;
  std::uint64_t device_ = 0;
  std::uint64_t inode_ = 0;
  std::uint32_t attributes_ = 0;
  bool denied_ = false;
  Stamp stamp_;
  std::int64_t stamped_at_ns_ = 0;  // real time
  std::int64_t changed_at_ns_ = 0;  // real time just after this process's last change
  bool doubtful_ = false;           // the stamp was taken in the tick of the last change
  std::uint64_t looked_at_ns_ = 0;  // monotonic
  std::uint64_t placed_at_ns_ = 0;  // monotonic; when its place was last checked
  std::uint64_t epoch_ = 0;
  bool listed_ = false;
  NameSet listed_names_;  // upper-case names, by HashName
  std::unordered_map<std::u16string, std::string, Hash, std::equal_to<>> spellings_;
};

// The names in a folder, without "." and "..", in the order of the disk. False with errno set when it cannot be read.
bool ReadNames(int fd, std::vector<std::string>* names);

}  // namespace winhost
