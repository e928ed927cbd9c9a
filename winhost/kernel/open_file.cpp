#include "winhost/kernel/open_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "winhost/kernel/devices.h"
#include "winhost/machine/clock.h"

namespace winhost {
namespace {

using Access = FileObject::FileAccess;
constexpr DWORD kReadBits = Access::kRead | Access::kReadAttributes;
constexpr DWORD kWriteBits = Access::kWrite | Access::kAppend | Access::kWriteAttributes;
constexpr DWORD kChanging = Access::kWrite | Access::kAppend | Access::kDelete;
constexpr DWORD kGuarded = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;

DWORD SpellOut(DWORD access) {
  DWORD bits = access & 0x001F01FF;
  if (access & (GENERIC_READ | GENERIC_ALL)) bits |= kReadBits;
  if (access & (GENERIC_WRITE | GENERIC_ALL)) bits |= kWriteBits;
  if (access & (GENERIC_EXECUTE | GENERIC_ALL)) bits |= Access::kExecute | Access::kReadAttributes;
  if (access & GENERIC_ALL) bits |= Access::kDelete;
  return bits;
}

std::uint8_t ShareAccess(DWORD bits) {
  std::uint8_t share = 0;
  if (bits & (Access::kRead | Access::kExecute)) share |= kShareRead;
  if (bits & (Access::kWrite | Access::kAppend)) share |= kShareWrite;
  if (bits & Access::kDelete) share |= kShareDelete;
  return share;
}

DWORD ErrorOfErrno(int error) {
  switch (error) {
    case ENOENT:
    case ENOTDIR:
      return ERROR_PATH_NOT_FOUND;
    case ENOSPC:
    case EDQUOT:
      return ERROR_DISK_FULL;
    case EMFILE:
    case ENFILE:
      return ERROR_TOO_MANY_OPEN_FILES;
    case ENAMETOOLONG:
      return ERROR_FILENAME_EXCED_RANGE;
    case EROFS:
      return ERROR_WRITE_PROTECT;
    default:
      return ERROR_ACCESS_DENIED;
  }
}

bool Replaces(DWORD disposition) { return disposition == CREATE_ALWAYS || disposition == TRUNCATE_EXISTING; }

// One attempt at opening one place; a name that changes under way makes it ask for another.
class Opening {
 public:
  Opening(FileSystem& files, const OpenRequest& request, Place& place)
      : files_(files), request_(request), place_(place), bits_(SpellOut(request.access)) {
    if (request.flags_and_attributes & FILE_FLAG_DELETE_ON_CLOSE) bits_ |= Access::kDelete;
  }

  static constexpr DWORD kAgain = 0xFFFFFFFF;

  DWORD Existing(const FileStat& stat, std::shared_ptr<KernelObject>* opened) {
    if (stat.directory) return Folder(opened);
    if (const DWORD error = MayOpen(stat)) return error;
    std::uint32_t slot;
    if (const DWORD error = Share(&slot)) return error;
    int fd = openat(place_.folder->fd(), place_.on_disk.c_str(),
                    O_CLOEXEC | O_NONBLOCK | (NeedsWriting() ? O_RDWR : O_RDONLY));
    // A read-only file may be opened to change its attributes, and Linux asks for nothing more.
    if (fd < 0) return GiveUp(slot, errno == ENOENT ? kAgain : ErrorOfErrno(errno));
    if (NeedsWriting() && stat.creation_moves) HoldCreation({fd, nullptr}, stat);
    if (Replaces(request_.disposition)) Empty(fd, stat);
    *opened = Finish(fd, slot, false);
    return 0;
  }

  DWORD Missing(std::shared_ptr<KernelObject>* opened) {
    if (request_.disposition == OPEN_EXISTING || request_.disposition == TRUNCATE_EXISTING) return ERROR_FILE_NOT_FOUND;
    if (const DWORD error = files_.MayChange(place_)) return error;
    std::uint32_t slot;
    if (const DWORD error = Share(&slot)) return error;
    const mode_t mode = Attributes() & FILE_ATTRIBUTE_READONLY ? 0444 : 0644;
    const int fd = openat(place_.folder->fd(), place_.on_disk.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (fd < 0) return GiveUp(slot, errno == EEXIST ? kAgain : ErrorOfErrno(errno));
    DressNew(fd);
    files_.Added(place_);
    *opened = Finish(fd, slot, true);
    return 0;
  }

 private:
  DWORD Attributes() const { return request_.flags_and_attributes & kSettableAttributes; }
  bool NeedsWriting() const {
    return (bits_ & (Access::kWrite | Access::kAppend)) != 0 || Replaces(request_.disposition);
  }

  DWORD Folder(std::shared_ptr<KernelObject>* opened) {
    if (request_.disposition == CREATE_NEW) return ERROR_FILE_EXISTS;
    if ((request_.flags_and_attributes & FILE_FLAG_BACKUP_SEMANTICS) == 0) return ERROR_ACCESS_DENIED;
    if (Replaces(request_.disposition)) return ERROR_ACCESS_DENIED;
    if (bits_ & (kWriteBits | Access::kDelete)) {
      if (const DWORD error = files_.MayChange(place_)) return error;
    }
    const int fd = place_.IsRoot()
                       ? openat(place_.folder->fd(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC)
                       : openat(place_.folder->fd(), place_.on_disk.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return ErrorOfErrno(errno);
    auto object = std::make_shared<FileObject>(fd, bits_, place_);
    object->SetFolder();
    *opened = std::move(object);
    return 0;
  }

  DWORD MayOpen(const FileStat& stat) const {
    if (request_.disposition == CREATE_NEW) return ERROR_FILE_EXISTS;
    const bool changes = (bits_ & (kChanging | Access::kWriteAttributes)) != 0 || Replaces(request_.disposition);
    if (changes) {
      if (const DWORD error = files_.MayChange(place_)) return error;
    }
    const bool writes = NeedsWriting() || (request_.flags_and_attributes & FILE_FLAG_DELETE_ON_CLOSE) != 0;
    if (writes && (stat.attributes & FILE_ATTRIBUTE_READONLY)) return ERROR_ACCESS_DENIED;
    // Replacing must name the guarding attributes that the file has.
    if (request_.disposition == CREATE_ALWAYS && (stat.attributes & kGuarded & ~Attributes()))
      return ERROR_ACCESS_DENIED;
    return 0;
  }

  DWORD Share(std::uint32_t* slot) {
    ShareTable::Request ask{place_.Key(), ShareAccess(bits_), static_cast<std::uint8_t>(request_.share & 7),
                            request_.image};
    // Emptying a file counts as writing to it even when the handle may not write.
    if (Replaces(request_.disposition)) ask.access |= kShareWrite;
    return files_.shares()->Open(ask, slot);
  }

  DWORD GiveUp(std::uint32_t slot, DWORD error) {
    files_.shares()->Close(slot);
    return error;
  }

  void Empty(int fd, const FileStat& stat) {
    if (ftruncate(fd, 0) != 0) return;
    files_.TakeBytes(place_.folder->drive(), -static_cast<std::int64_t>(stat.size));
    written_ = true;
    if (request_.disposition != CREATE_ALWAYS) return;
    const DWORD wanted = Attributes() | FILE_ATTRIBUTE_ARCHIVE;
    if (wanted != stat.attributes) WriteFileAttributes({fd, nullptr}, false, wanted);
  }

  void DressNew(int fd) const {
    const DWORD beyond = Attributes() & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE);
    FileExtra extra{beyond, 0, std::nullopt};
    if (HasOwnClock(files_.machine())) {
      const std::uint64_t now = MachineTime100ns();
      WriteFileTimes({fd, nullptr}, {std::nullopt, now, now}, true);
      extra.creation = now;
    }
    if (!extra.IsDefault()) WriteFileExtra({fd, nullptr}, extra);
  }

  std::shared_ptr<KernelObject> Finish(int fd, std::uint32_t slot, bool made) {
    const DWORD beyond = Attributes() & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE);
    auto object = std::make_shared<FileObject>(fd, bits_, std::move(place_));
    object->SetSlot(files_.shares(), slot);
    if (made && beyond == 0 && !HasOwnClock(files_.machine())) object->SetFresh();
    if (written_) object->NoteWritten();
    if (request_.flags_and_attributes & FILE_FLAG_DELETE_ON_CLOSE) object->DeleteOnClose();
    return object;
  }

  FileSystem& files_;
  const OpenRequest& request_;
  Place& place_;
  DWORD bits_;
  bool written_ = false;
};

DWORD OpenNamedDevice(std::u16string_view name, const OpenRequest& request, std::shared_ptr<KernelObject>* opened) {
  if (name == u"NUL") {
    const int fd = open("/dev/null", O_RDWR | O_CLOEXEC);
    if (fd < 0) return ErrorOfErrno(errno);
    auto object = std::make_shared<FileObject>(fd, SpellOut(request.access), Place());
    object->SetNull();
    *opened = std::move(object);
    return 0;
  }
  DWORD error = 0;
  std::shared_ptr<Device> device = OpenDevice(name, request.access, &error);
  if (!device) return error;
  *opened = std::make_shared<DeviceObject>(std::move(device));
  return 0;
}

DWORD CheckRequest(const OpenRequest& request) {
  if (request.disposition < CREATE_NEW || request.disposition > TRUNCATE_EXISTING) return ERROR_INVALID_PARAMETER;
  const bool may_write = (SpellOut(request.access) & Access::kWrite) != 0;
  if (request.disposition == TRUNCATE_EXISTING && !may_write) return ERROR_INVALID_PARAMETER;
  return (request.share & ~7u) != 0 ? ERROR_INVALID_PARAMETER : 0;
}

// What a separator at the end makes of an open.
DWORD TrailingSeparatorError(DWORD found, const FileStat& stat, const OpenRequest& request) {
  if (found != 0 || !stat.directory) return ERROR_INVALID_NAME;
  return request.flags_and_attributes & FILE_FLAG_BACKUP_SEMANTICS ? 0 : ERROR_PATH_NOT_FOUND;
}

}  // namespace

DWORD OpenFile(std::u16string_view path, const OpenRequest& request, std::shared_ptr<KernelObject>* opened,
               bool* existed) {
  *existed = false;
  FileSystem& files = FileSystem::Current();
  FullPath full;
  if (const DWORD error = files.Parse(path, &full)) return error;
  if (const DWORD error = CheckRequest(request)) return error;
  if (full.kind == FullPath::Kind::Device) return OpenNamedDevice(full.text, request, opened);
  for (int attempt = 0; attempt < 4; ++attempt) {
    Place place;
    if (const DWORD error = files.Locate(full, &place, attempt > 0)) return error;
    FileStat stat;
    const bool certainly_new = place.missing && request.disposition != OPEN_EXISTING;
    const DWORD found = certainly_new && !full.trailing_separator ? ERROR_FILE_NOT_FOUND : files.Stat(&place, &stat);
    if (found != 0 && found != ERROR_FILE_NOT_FOUND) return found;
    if (full.trailing_separator) {
      if (const DWORD error = TrailingSeparatorError(found, stat, request)) return error;
    }
    Opening opening(files, request, place);
    const DWORD error = found == 0 ? opening.Existing(stat, opened) : opening.Missing(opened);
    if (error == Opening::kAgain) continue;
    *existed = error == 0 && found == 0;
    return error;
  }
  return ERROR_ACCESS_DENIED;
}

}  // namespace winhost
