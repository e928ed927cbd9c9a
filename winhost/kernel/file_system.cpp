#include "winhost/kernel/file_system.h"

#include <sys/stat.h>
#include <time.h>
#include <unistd.h>
#include <windows.h>

#include <atomic>
#include <cerrno>
#include <nlohmann/json.hpp>

#include "winhost/kernel/paths.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

std::atomic<FileSystem*> g_current{nullptr};

// Open folders that are kept; each costs a descriptor.
constexpr std::size_t kMostFolders = 200;
// What their listings may take together.
constexpr std::size_t kMostListingBytes = 512 * 1024;

std::uint64_t MonotonicNs() {
  timespec now;
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<std::uint64_t>(now.tv_sec) * 1'000'000'000ull + static_cast<std::uint64_t>(now.tv_nsec);
}

bool IsFolder(const std::string& path) {
  struct stat stat;
  return ::stat(path.c_str(), &stat) == 0 && S_ISDIR(stat.st_mode);
}

std::u16string StartDirectory() {
  char buffer[4096];
  return getcwd(buffer, sizeof buffer) ? WindowsPath(buffer) : std::u16string(u"C:\\");
}

bool IsSeparator(char16_t c) { return c == u'\\' || c == u'/'; }

// Whether a given text spells a full path, with either separator.
bool IsSamePath(std::u16string_view text, std::u16string_view full) {
  for (std::size_t i = 0; i < full.size(); ++i) {
    if (text[i] != full[i] && !(full[i] == u'\\' && text[i] == u'/')) return false;
  }
  return true;
}

DWORD ErrorOfFolder(int error) { return error == EACCES ? ERROR_ACCESS_DENIED : ERROR_PATH_NOT_FOUND; }

}  // namespace

std::string Place::LinuxPath() const {
  if (IsRoot()) return folder->linux_path();
  const std::string& base = folder->linux_path();
  return base.back() == '/' ? base + on_disk : base + '/' + on_disk;
}

std::u16string Place::WindowsPath() const {
  if (IsRoot()) return folder->path();
  std::u16string path = folder->path();
  if (path.back() != u'\\') path += u'\\';
  return path + Wide(on_disk);
}

FileSystem& FileSystem::Current() {
  Machine& machine = Machine::Current();
  FileSystem* current = g_current.load(std::memory_order_acquire);
  if (current && &current->machine_ == &machine) return *current;
  FileSystem& made = machine.Get<FileSystem>();
  g_current.store(&made, std::memory_order_release);
  return made;
}

FileSystem::FileSystem(Machine& machine) : machine_(machine), shares_(std::make_shared<ShareTable>(machine.folder())) {
  for (const std::string& path : machine.facts().denied) {
    FullPath full;
    if (ParsePath(Wide(path), {}, &full) == 0) denied_.push_back(Upcase(full.text));
  }
}

FileSystem::~FileSystem() {
  FileSystem* self = this;
  g_current.compare_exchange_strong(self, nullptr);
}

Drive* FileSystem::FindDrive(char16_t letter) {
  letter = Upcase(letter);
  if (letter < u'A' || letter > u'Z') return nullptr;
  std::optional<Drive>& slot = drives_[letter - u'A'];
  const std::string name(1, static_cast<char>(letter));
  const auto fact = machine_.facts().drives.find(name);
  const bool has_fact = fact != machine_.facts().drives.end();
  std::string path = (machine_.folder() / name).string();
  if (slot) {
    if (slot->linux_path == "/" || IsFolder(path)) return &*slot;
    DropFolders();
    slot.reset();
  }
  DriveFacts facts = has_fact ? fact->second : DriveFacts();
  if (!IsFolder(path)) {
    if (has_fact) {
      mkdir(path.c_str(), 0755);
    } else if (letter == u'Z') {
      path = "/";
      facts.read_only = true;
    } else {
      return nullptr;
    }
  }
  slot.emplace(Drive{letter, std::move(path), std::move(facts), nullptr});
  return &*slot;
}

std::vector<char16_t> FileSystem::DriveLetters() {
  std::scoped_lock lock(lock_);
  std::vector<char16_t> letters;
  for (char16_t letter = u'A'; letter <= u'Z'; ++letter) {
    if (FindDrive(letter)) letters.push_back(letter);
  }
  return letters;
}

std::uint64_t FileSystem::FreeBytes(const Drive& drive) const {
  if (!IsBounded(drive)) return drive.facts.total_bytes / 2;
  const std::int64_t left = static_cast<std::int64_t>(*drive.facts.free_bytes) - shares_->UsedBytes(drive.letter);
  return left > 0 ? static_cast<std::uint64_t>(left) : 0;
}

bool FileSystem::TakeBytes(const Drive& drive, std::int64_t bytes) {
  return !IsBounded(drive) || shares_->TakeBytes(drive.letter, bytes, *drive.facts.free_bytes);
}

DWORD FileSystem::ShareOf(const FullPath& full, Drive** drive) {
  const std::u16string key = Upcase(std::u16string_view(full.text).substr(0, full.root - 1));
  if (const auto known = network_.find(key); known != network_.end()) {
    *drive = known->second.get();
    return 0;
  }
  std::filesystem::path at = machine_.folder() / "UNC";
  std::u16string_view rest = std::u16string_view(key).substr(2);
  for (const DWORD missing : {DWORD{ERROR_BAD_NETPATH}, DWORD{ERROR_BAD_NET_NAME}}) {
    const std::u16string_view part = rest.substr(0, rest.find(u'\\'));
    rest.remove_prefix(std::min(rest.size(), part.size() + 1));
    std::error_code error;
    bool found = false;
    for (std::filesystem::directory_iterator entry(at, error), end; !error && entry != end; entry.increment(error)) {
      if (part.empty() || !EqualNoCase(Wide(entry->path().filename().string()), part)) continue;
      at = entry->path();
      found = true;
      break;
    }
    if (!found) return missing;
  }
  DriveFacts facts;
  facts.kind = "network";
  auto share = std::make_unique<Drive>(Drive{0, at.string(), facts, nullptr});
  *drive = (network_[key] = std::move(share)).get();
  return 0;
}

DWORD FileSystem::RootOf(const FullPath& full, std::shared_ptr<Directory>* root) {
  Drive* drive = nullptr;
  if (full.kind == FullPath::Kind::Unc) {
    if (const DWORD error = ShareOf(full, &drive)) return error;
  } else {
    drive = FindDrive(full.text[0]);
  }
  if (!drive) return ERROR_PATH_NOT_FOUND;
  if (drive->root && !drive->root->Refresh(MonotonicNs(), epoch_)) drive->root.reset();
  if (!drive->root) {
    const std::size_t length = full.kind == FullPath::Kind::Unc ? full.root - 1 : full.root;
    drive->root = Directory::Open(nullptr, {}, full.text.substr(0, length), drive->linux_path, drive);
    if (!drive->root) return ErrorOfFolder(errno);
    drive->root->set_denied(IsDenied(drive->root->path()));
  }
  *root = drive->root;
  return 0;
}

bool FileSystem::IsDenied(std::u16string_view path) const {
  if (denied_.empty()) return false;
  const std::u16string upcased = Upcase(path);
  for (const std::u16string& row : denied_) {
    if (upcased.compare(0, row.size(), row) != 0) continue;
    if (upcased.size() == row.size() || row.back() == u'\\' || upcased[row.size()] == u'\\') return true;
  }
  return false;
}

std::shared_ptr<Directory> FileSystem::OpenFolder(const std::shared_ptr<Directory>& parent, const Place& place) {
  std::shared_ptr<Directory> opened =
      Directory::Open(parent, place.on_disk, place.WindowsPath(), place.LinuxPath(), &parent->drive());
  if (opened) opened->set_denied(parent->denied() || IsDenied(opened->path()));
  return opened;
}

// From the root down, a component at a time, as far as folders are not known already.
DWORD FileSystem::WalkTo(std::u16string_view path, const FullPath& full, std::shared_ptr<Directory>* folder) {
  std::shared_ptr<Directory> at;
  if (const DWORD error = RootOf(full, &at)) return error;
  const std::uint64_t now = MonotonicNs();
  std::u16string_view rest = path.size() > full.root ? path.substr(full.root) : std::u16string_view();
  std::u16string key = Upcase(at->path());
  while (!rest.empty()) {
    const std::u16string_view name = rest.substr(0, rest.find(u'\\'));
    rest.remove_prefix(std::min(rest.size(), name.size() + 1));
    if (key.back() != u'\\') key += u'\\';
    key += Upcase(name);
    const auto known = folders_.find(key);
    if (known != folders_.end() && known->second->parent() == at && known->second->Refresh(now, epoch_)) {
      at = known->second;
      continue;
    }
    Place place;
    place.folder = at;
    FindName(at, name, &place, false);
    std::shared_ptr<Directory> next = OpenFolder(at, place);
    if (!next && !place.missing) {
      const int error = errno;
      at->Forget();
      FindName(at, name, &place, true);
      errno = error;
      next = OpenFolder(at, place);
    }
    if (!next) return ErrorOfFolder(errno);
    if (folders_.size() >= kMostFolders) folders_.clear();
    folders_[key] = next;
    at = std::move(next);
  }
  *folder = std::move(at);
  return 0;
}

void FileSystem::LookForOthers() {
  if (shares_->OthersChanged()) ++epoch_;
}

void FileSystem::UseFolder(std::u16string_view path, const std::shared_ptr<Directory>& folder) {
  if (last_folder_ && last_folder_ != folder) {
    left_listing_bytes_ += last_folder_->listing_bytes();
    if (left_listing_bytes_ > kMostListingBytes) BoundListings(*folder);
  }
  last_path_ = path;
  last_folder_ = folder;
}

// Whatever is unpacked into however many folders, what is known of their names stays within a bound.
void FileSystem::BoundListings(const Directory& but) {
  std::size_t bytes = 0;
  for (const auto& [path, folder] : folders_) bytes += folder->listing_bytes();
  const bool too_many = bytes > kMostListingBytes;
  for (const auto& [path, folder] : folders_) {
    if (too_many && folder.get() != &but) folder->Forget();
  }
  left_listing_bytes_ = too_many ? 0 : bytes;
}

// A folder that is kept open and still is what the path names; none when it must be walked to.
std::shared_ptr<Directory> FileSystem::KnownFolder(std::u16string_view path) {
  LookForOthers();
  if (last_folder_ && path == last_path_) {
    if (last_folder_->Refresh(MonotonicNs(), epoch_)) return last_folder_;
    DropFolders();
    return nullptr;
  }
  const auto known = folders_.find(Upcase(path));
  if (known == folders_.end() || !known->second->Refresh(MonotonicNs(), epoch_)) return nullptr;
  UseFolder(path, known->second);
  return last_folder_;
}

DWORD FileSystem::FindFolder(std::u16string_view path, const FullPath& full, std::shared_ptr<Directory>* folder) {
  if ((*folder = KnownFolder(path))) return 0;
  const DWORD error = WalkTo(path, full, folder);
  if (error == 0) UseFolder(path, *folder);
  return error;
}

void FileSystem::FindName(const std::shared_ptr<Directory>& folder, std::u16string_view name, Place* place, bool sure) {
  place->folder = folder;
  place->upcased = Upcase(name);
  if (sure) folder->Forget();
  const std::string* known = nullptr;
  Directory::Look look = folder->Find(place->upcased, &known);
  if (look == Directory::Look::Missing && folder->RelistIfDoubtful()) look = folder->Find(place->upcased, &known);
  if (look == Directory::Look::Unknown) {
    // The exact name first: most names are spelt as they are on disk, and large folders then need not be read.
    place->on_disk = Narrow(name);
    struct stat stat;
    if (fstatat(folder->fd(), place->on_disk.c_str(), &stat, 0) == 0) {
      place->missing = false;
      return;
    }
    look = folder->Search(place->upcased, &known) ? Directory::Look::Found : Directory::Look::Missing;
  }
  place->missing = look != Directory::Look::Found;
  place->on_disk = place->missing ? Narrow(name) : *known;
}

DWORD FileSystem::Locate(const FullPath& path, Place* place, bool sure) {
  std::scoped_lock lock(lock_);
  std::shared_ptr<Directory> folder;
  if (const DWORD error = FindFolder(path.Parent(), path, &folder)) return error;
  if (path.IsRoot()) {
    place->folder = std::move(folder);
    place->upcased.clear();
    place->on_disk.clear();
    place->missing = false;
  } else {
    FindName(folder, path.Name(), place, sure);
  }
  return 0;
}

// Most paths name something in the folder that was used last, spelt alike, and then only the name needs a look.
bool FileSystem::ParseBelowLast(std::u16string_view text, FullPath* full) {
  {
    std::scoped_lock lock(lock_);
    const std::size_t length = last_path_.size();
    const bool below = length > 3 && text.size() > length + 1 && text.size() < MAX_PATH && last_path_[1] == u':' &&
                       IsSeparator(text[length]) && IsSamePath(text.substr(0, length), last_path_);
    if (!below || !IsPlainName(text.substr(length + 1))) return false;
    full->text.reserve(text.size());
    full->text = last_path_;
    full->text += u'\\';
    full->text += text.substr(length + 1);
  }
  full->kind = FullPath::Kind::Disk;
  full->root = 3;
  full->trailing_separator = false;
  return true;
}

DWORD FileSystem::Parse(std::u16string_view text, FullPath* full, PathLimit limit) {
  if (limit.length == PathLimit().length && ParseBelowLast(text, full)) return 0;
  const bool absolute = text.size() > 2 && text[1] == u':' && (text[2] == u'\\' || text[2] == u'/');
  return absolute ? ParsePath(text, {}, full, limit) : ParsePath(text, CurrentDirectory(), full, limit);
}

DWORD FileSystem::LocateText(std::u16string_view text, Place* place, PathLimit limit, std::u16string* name) {
  FullPath full;
  if (const DWORD error = Parse(text, &full, limit)) return error;
  if (full.kind == FullPath::Kind::Device) return ERROR_INVALID_NAME;
  if (name) *name = full.Name();
  return Locate(full, place);
}

DWORD FileSystem::Stat(Place* place, FileStat* stat) {
  if (place->IsRoot()) return ReadFileStat({place->folder->fd(), nullptr}, stat) ? 0 : ERROR_PATH_NOT_FOUND;
  for (int attempt = 0; attempt < 2; ++attempt) {
    if (ReadFileStat({-1, place->LinuxPath().c_str()}, stat)) {
      if (place->missing) Forget(*place);
      place->missing = false;
      return 0;
    }
    if (errno == EACCES) return ERROR_ACCESS_DENIED;
    if (place->missing) break;
    std::scoped_lock lock(lock_);
    FindName(place->folder, Wide(place->on_disk), place, true);
  }
  return ERROR_FILE_NOT_FOUND;
}

bool FileSystem::QuickAttributes(std::u16string_view text, DWORD* attributes) {
  std::scoped_lock lock(lock_);
  if (!last_folder_ || text != last_path_) return false;
  LookForOthers();
  if (!last_folder_->Refresh(MonotonicNs(), epoch_)) return false;
  *attributes = last_folder_->attributes();
  return true;
}

DWORD FileSystem::Attributes(const FullPath& path, DWORD* attributes) {
  {
    std::scoped_lock lock(lock_);
    if (const std::shared_ptr<Directory> folder = KnownFolder(path.text)) {
      *attributes = folder->attributes();
      return 0;
    }
  }
  Place place;
  if (const DWORD error = Locate(path, &place)) return error;
  FileStat stat;
  if (const DWORD error = Stat(&place, &stat)) return error;
  *attributes = stat.attributes;
  return 0;
}

DWORD FileSystem::MayChange(const Directory& folder) const {
  if (folder.drive().facts.read_only) return ERROR_WRITE_PROTECT;
  return folder.denied() ? ERROR_ACCESS_DENIED : 0;
}

DWORD FileSystem::MayChange(const Place& place) const {
  if (const DWORD error = MayChange(*place.folder)) return error;
  return !denied_.empty() && IsDenied(place.WindowsPath()) ? ERROR_ACCESS_DENIED : 0;
}

void FileSystem::Added(const Place& place) {
  std::scoped_lock lock(lock_);
  shares_->CountChange();
  place.folder->Added(place.upcased);
}

void FileSystem::Removed(const Place& place) {
  std::scoped_lock lock(lock_);
  shares_->CountChange();
  place.folder->Removed(place.upcased);
}

void FileSystem::DropFolders() {
  folders_.clear();
  last_folder_.reset();
}

void FileSystem::ForgetFolders() {
  std::scoped_lock lock(lock_);
  DropFolders();
}

void FileSystem::Forget(const Place& place) {
  std::scoped_lock lock(lock_);
  place.folder->Forget();
}

std::u16string FileSystem::CurrentDirectory() {
  std::scoped_lock lock(lock_);
  if (current_directory_.empty()) current_directory_ = StartDirectory();
  return current_directory_;
}

void FileSystem::ChangeDirectory(std::u16string path) {
  std::scoped_lock lock(lock_);
  current_directory_ = std::move(path);
}

}  // namespace winhost
