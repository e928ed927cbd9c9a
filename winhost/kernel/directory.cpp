#include "winhost/kernel/directory.h"

#include <dirent.h>
#include <fcntl.h>
#include <time.h>
#include <unistd.h>

#include <cstring>

#include "winhost/kernel/file_stat.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

// Within this span nothing but this program's own next call can have happened: shorter than any change to a folder
// takes.
constexpr std::uint64_t kLookHoldsNs = 2'000;
// Folders above this one are looked after less often; within winhost their changes are announced.
constexpr std::uint64_t kPlaceHoldsNs = 500'000;
constexpr std::int64_t kTickNs = 20'000'000;
constexpr std::size_t kMostSpellings = 64;

std::int64_t RealNs() {
  timespec now;
  clock_gettime(CLOCK_REALTIME, &now);
  return now.tv_sec * 1'000'000'000ll + now.tv_nsec;
}

std::int64_t Ns(const timespec& time) { return time.tv_sec * 1'000'000'000ll + time.tv_nsec; }

// Calls `visit` for each name but "." and ".." until it answers false. False with errno set when they cannot be read.
template <class Visit>
bool VisitNames(int fd, Visit visit) {
  // A descriptor of its own, so that two readers do not move each other's position.
  const int own = openat(fd, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (own < 0) return false;
  DIR* reader = fdopendir(own);
  if (!reader) {
    close(own);
    return false;
  }
  while (const dirent* entry = readdir(reader)) {
    const bool dots = std::strcmp(entry->d_name, ".") == 0 || std::strcmp(entry->d_name, "..") == 0;
    if (!dots && !visit(entry->d_name)) break;
  }
  closedir(reader);
  return true;
}

}  // namespace

std::shared_ptr<Directory> Directory::Open(std::shared_ptr<Directory> parent, std::string name, std::u16string path,
                                           std::string linux_path, Drive* drive) {
  const int fd = parent ? openat(parent->fd_, name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)
                        : open(linux_path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return nullptr;
  std::shared_ptr<Directory> made(new Directory);
  made->fd_ = fd;
  made->parent_ = std::move(parent);
  made->name_ = std::move(name);
  made->path_ = std::move(path);
  made->linux_path_ = std::move(linux_path);
  made->drive_ = drive;
  made->denied_ = made->parent_ && made->parent_->denied_;
  struct stat stat;
  if (fstat(fd, &stat) != 0) return nullptr;
  made->device_ = stat.st_dev;
  made->inode_ = stat.st_ino;
  made->TakeStamp(stat, RealNs());
  made->LoadAttributes();
  return made;
}

Directory::~Directory() {
  if (fd_ >= 0) close(fd_);
}

void Directory::TakeStamp(const struct stat& stat, std::int64_t real_ns) {
  stamp_ = StampOf(stat);
  stamped_at_ns_ = real_ns;
  doubtful_ = stamped_at_ns_ - Ns(stamp_.change) < kTickNs;
}

void Directory::LoadAttributes() {
  FileStat stat;
  if (ReadFileStat({fd_, nullptr}, &stat)) attributes_ = stat.attributes;
}

bool Directory::IsWhereItWas() const {
  for (const Directory* at = this; at->parent_; at = at->parent_.get()) {
    struct stat stat;
    if (fstatat(at->parent_->fd_, at->name_.c_str(), &stat, 0) != 0) return false;
    if (stat.st_ino != at->inode_ || stat.st_dev != at->device_) return false;
  }
  return true;
}

bool Directory::Refresh(std::uint64_t now, std::uint64_t epoch) {
  const bool distrust = epoch != epoch_;
  if (!distrust && now - looked_at_ns_ < kLookHoldsNs) return true;
  struct stat stat;
  if (fstat(fd_, &stat) != 0 || stat.st_nlink == 0) return false;
  if (distrust || now - placed_at_ns_ > kPlaceHoldsNs) {
    if (!IsWhereItWas()) return false;
    placed_at_ns_ = now;
  }
  if (!(StampOf(stat) == stamp_)) {
    const bool own = IsOwnChange(StampOf(stat));
    TakeStamp(stat, own ? changed_at_ns_ : RealNs());
    if (!own) {
      Forget();
      LoadAttributes();
    }
  } else if (distrust && doubtful_) {
    Forget();
  }
  looked_at_ns_ = now;
  epoch_ = epoch;
  return true;
}

Directory::Look Directory::Find(std::u16string_view upcased_name, const std::string** on_disk) const {
  if (!listed_) return Look::Unknown;
  if (!listed_names_.MayHold(HashName(upcased_name))) return Look::Missing;
  if (spellings_.empty()) return Look::Unknown;
  const auto found = spellings_.find(upcased_name);
  if (found == spellings_.end()) return Look::Unknown;
  *on_disk = &found->second;
  return Look::Found;
}

bool Directory::List() {
  if (listed_) return true;
  struct stat stat;
  if (fstat(fd_, &stat) != 0) return false;
  TakeStamp(stat, RealNs());
  listed_names_.Clear();
  listed_ = VisitNames(fd_, [this](const char* name) {
    listed_names_.Add(HashName(Upcase(Wide(name))));
    return true;
  });
  return listed_;
}

bool Directory::Search(std::u16string_view upcased_name, const std::string** on_disk) {
  if (!List() || !listed_names_.MayHold(HashName(upcased_name))) return false;
  std::string spelling;
  VisitNames(fd_, [&](const char* name) {
    if (!EqualNoCase(Wide(name), upcased_name)) return true;
    spelling = name;
    return false;
  });
  if (spelling.empty()) return false;
  if (spellings_.size() >= kMostSpellings) spellings_.clear();
  *on_disk = &spellings_.insert_or_assign(std::u16string(upcased_name), std::move(spelling)).first->second;
  return true;
}

bool Directory::RelistIfDoubtful() {
  if (!listed_ || !doubtful_ || RealNs() - stamped_at_ns_ < kTickNs) return false;
  Forget();
  return List();
}

void Directory::Added(std::u16string_view upcased_name) {
  if (!listed_) return;
  ForgetSpelling(upcased_name);
  listed_names_.Add(HashName(upcased_name));
  changed_at_ns_ = RealNs();
}

void Directory::Removed(std::u16string_view upcased_name) {
  if (!listed_) return;
  ForgetSpelling(upcased_name);
  listed_names_.Remove(HashName(upcased_name));
  changed_at_ns_ = RealNs();
}

void Directory::ForgetSpelling(std::u16string_view upcased_name) {
  if (spellings_.empty()) return;
  const auto found = spellings_.find(upcased_name);
  if (found != spellings_.end()) spellings_.erase(found);
}

// A stamp that is no later than this process's last change is that change's own: the names know of it already.
bool Directory::IsOwnChange(const Stamp& stamp) const {
  return Ns(stamp.modification) <= changed_at_ns_ && Ns(stamp.change) <= changed_at_ns_;
}

void Directory::Forget() {
  listed_ = false;
  listed_names_.Clear();
  spellings_.clear();
}

bool ReadNames(int fd, std::vector<std::string>* names) {
  return VisitNames(fd, [names](const char* name) {
    names->emplace_back(name);
    return true;
  });
}

}  // namespace winhost
