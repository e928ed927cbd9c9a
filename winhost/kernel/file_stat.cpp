#include "winhost/kernel/file_stat.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <time.h>
#include <unistd.h>
#include <windows.h>

#include <algorithm>
#include <cerrno>
#include <cinttypes>
#include <cstdio>
#include <filesystem>

#include "winhost/machine/machine.h"

namespace winhost {
namespace {

constexpr char kExtraName[] = "user.vanta.file";
constexpr std::int64_t kUnixEpoch = 116'444'736'000'000'000;
constexpr std::int64_t kTicksASecond = 10'000'000;
// A coarse clock stamps new files up to one kernel tick late, so "now" is taken with this margin.
constexpr std::uint64_t kClockTick = 100'000;

bool Statx(FileRef file, unsigned mask, struct statx* into) {
  return file.fd >= 0 ? statx(file.fd, "", AT_EMPTY_PATH, mask, into) == 0
                      : statx(AT_FDCWD, file.path, 0, mask, into) == 0;
}

std::uint64_t Ticks(const statx_timestamp& time) { return FromUnixTime(time.tv_sec, time.tv_nsec); }

std::uint64_t Birth(const struct statx& stat) {
  return stat.stx_mask & STATX_BTIME ? Ticks(stat.stx_btime) : Ticks(stat.stx_ctime);
}

// Where the extra of a file lies when its file system keeps no extended attributes. The birth time tells a new file
// that got an old one's inode from the old one.
std::filesystem::path SidePath(FileRef file) {
  struct statx stat;
  if (!Statx(file, STATX_INO | STATX_BTIME, &stat)) return {};
  char name[80];
  std::snprintf(name, sizeof name, "%x.%x-%" PRIx64 "-%" PRIx64, stat.stx_dev_major, stat.stx_dev_minor,
                static_cast<std::uint64_t>(stat.stx_ino), stat.stx_mask & STATX_BTIME ? Ticks(stat.stx_btime) : 0);
  return Machine::Current().folder() / ".extra" / name;
}

std::string ReadText(FileRef file) {
  char text[80];
  const ssize_t length = file.fd >= 0 ? fgetxattr(file.fd, kExtraName, text, sizeof text)
                                      : getxattr(file.path, kExtraName, text, sizeof text);
  if (length > 0) return std::string(text, static_cast<std::size_t>(length));
  if (errno != ENOTSUP) return {};
  const int side = open(SidePath(file).c_str(), O_RDONLY | O_CLOEXEC);
  if (side < 0) return {};
  const ssize_t got = read(side, text, sizeof text);
  close(side);
  return got > 0 ? std::string(text, static_cast<std::size_t>(got)) : std::string();
}

bool WriteSide(FileRef file, const std::string& text) {
  const std::filesystem::path path = SidePath(file);
  if (path.empty()) return false;
  if (text.empty()) return unlink(path.c_str()) == 0 || errno == ENOENT;
  std::error_code ignored;
  std::filesystem::create_directories(path.parent_path(), ignored);
  const int side = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
  if (side < 0) return false;
  const bool written = write(side, text.data(), text.size()) == static_cast<ssize_t>(text.size());
  close(side);
  return written;
}

int SetXattr(FileRef file, const std::string& text) {
  if (text.empty()) {
    return file.fd >= 0 ? fremovexattr(file.fd, kExtraName) : removexattr(file.path, kExtraName);
  }
  return file.fd >= 0 ? fsetxattr(file.fd, kExtraName, text.data(), text.size(), 0)
                      : setxattr(file.path, kExtraName, text.data(), text.size(), 0);
}

bool ChangeMode(FileRef file, mode_t mode) {
  return (file.fd >= 0 ? fchmod(file.fd, mode) : chmod(file.path, mode)) == 0;
}

bool WriteText(FileRef file, const std::string& text) {
  if (SetXattr(file, text) == 0 || (text.empty() && errno == ENODATA)) return true;
  if (errno == ENOTSUP) return WriteSide(file, text);
  struct statx stat;
  if (errno != EACCES || !Statx(file, STATX_MODE, &stat)) return false;
  // Linux wants write permission for this even of the owner: lend the file its write bit meanwhile.
  if (!ChangeMode(file, (stat.stx_mode & 07777u) | 0200u)) return false;
  const bool written = SetXattr(file, text) == 0 || (text.empty() && errno == ENODATA);
  return ChangeMode(file, stat.stx_mode & 07777u) && written;
}

timespec ToTimespec(const std::optional<std::uint64_t>& time) {
  timespec spec{0, UTIME_OMIT};
  if (!time) return spec;
  const std::int64_t since = static_cast<std::int64_t>(*time) - kUnixEpoch;
  std::int64_t seconds = since / kTicksASecond;
  std::int64_t rest = since % kTicksASecond;
  if (rest < 0) {
    --seconds;
    rest += kTicksASecond;
  }
  spec.tv_sec = seconds;
  spec.tv_nsec = rest * 100;
  return spec;
}

DWORD AttributesOf(bool directory, mode_t mode, const FileExtra& extra) {
  DWORD attributes = directory ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_ARCHIVE;
  if (!directory && (mode & 0200) == 0) attributes |= FILE_ATTRIBUTE_READONLY;
  attributes = (attributes | extra.set) & ~extra.cleared;
  return attributes ? attributes : FILE_ATTRIBUTE_NORMAL;
}

std::uint64_t RealNow() {
  timespec now;
  clock_gettime(CLOCK_REALTIME_COARSE, &now);
  return FromUnixTime(now.tv_sec, static_cast<std::uint32_t>(now.tv_nsec));
}

// Whether the creation time needs to be kept, given what the file's own times will answer.
bool CreationShowsByItself(FileRef file, const FileTimes& times, bool fresh) {
  if (fresh && times.modification == times.creation && *times.creation + kClockTick < RealNow()) return true;
  struct statx stat;
  if (!Statx(file, STATX_BTIME | STATX_MTIME | STATX_CTIME, &stat)) return false;
  return std::min(Birth(stat), Ticks(stat.stx_mtime)) == *times.creation;
}

}  // namespace

std::uint64_t FromUnixTime(std::int64_t seconds, std::uint32_t nanoseconds) {
  return static_cast<std::uint64_t>(seconds * kTicksASecond + kUnixEpoch) + nanoseconds / 100;
}

FileExtra ReadFileExtra(FileRef file) {
  FileExtra extra;
  const std::string text = ReadText(file);
  if (text.empty()) return extra;
  std::uint64_t creation = 0;
  const int fields = std::sscanf(text.c_str(), "%x %x %" SCNu64, &extra.set, &extra.cleared, &creation);
  extra.set &= kSettableAttributes;
  extra.cleared &= FILE_ATTRIBUTE_ARCHIVE;
  if (fields == 3) extra.creation = creation;
  return extra;
}

bool WriteFileExtra(FileRef file, const FileExtra& extra) {
  if (extra.IsDefault()) return WriteText(file, {});
  char text[80];
  int length = std::snprintf(text, sizeof text, "%x %x", extra.set, extra.cleared);
  if (extra.creation) {
    length +=
        std::snprintf(text + length, sizeof text - static_cast<std::size_t>(length), " %" PRIu64, *extra.creation);
  }
  return WriteText(file, std::string(text, static_cast<std::size_t>(length)));
}

bool ReadFileStat(FileRef file, FileStat* into) {
  struct statx stat;
  if (!Statx(file, STATX_BASIC_STATS | STATX_BTIME, &stat)) return false;
  const FileExtra extra = ReadFileExtra(file);
  into->directory = S_ISDIR(stat.stx_mode);
  into->regular = S_ISREG(stat.stx_mode);
  into->attributes = AttributesOf(into->directory, stat.stx_mode, extra);
  into->size = into->directory ? 0 : stat.stx_size;
  into->modification = Ticks(stat.stx_mtime);
  into->access = Ticks(stat.stx_atime);
  into->creation = extra.creation ? *extra.creation : std::min(Birth(stat), into->modification);
  into->creation_moves = !extra.creation && into->modification < Birth(stat);
  into->device = (static_cast<std::uint64_t>(stat.stx_dev_major) << 32) | stat.stx_dev_minor;
  into->inode = stat.stx_ino;
  into->links = stat.stx_nlink;
  return true;
}

bool WriteFileAttributes(FileRef file, bool directory, DWORD attributes) {
  FileExtra extra = ReadFileExtra(file);
  const DWORD own = attributes & kSettableAttributes;
  extra.set = own & ~static_cast<DWORD>(FILE_ATTRIBUTE_ARCHIVE);
  extra.cleared = 0;
  if (directory) {
    extra.set |= own & FILE_ATTRIBUTE_ARCHIVE;
    return WriteFileExtra(file, extra);
  }
  // A file shows READONLY by its mode; on a folder the same mode would keep Linux from making files in it.
  extra.set &= ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY);
  if ((own & FILE_ATTRIBUTE_ARCHIVE) == 0) extra.cleared = FILE_ATTRIBUTE_ARCHIVE;
  if (!WriteFileExtra(file, extra)) return false;
  struct statx stat;
  if (!Statx(file, STATX_MODE, &stat)) return false;
  const mode_t mode = stat.stx_mode & 07777;
  const mode_t wanted = own & FILE_ATTRIBUTE_READONLY ? mode & ~0222u : mode | 0200u;
  return wanted == mode || ChangeMode(file, wanted);
}

bool WriteFileTimes(FileRef file, const FileTimes& times, bool fresh) {
  FileExtra extra = fresh ? FileExtra() : ReadFileExtra(file);
  std::optional<std::uint64_t> kept = extra.creation;
  if (!times.creation && times.modification && !kept) {
    // Moving the modification time must not take the creation time, which is read from it, along.
    FileStat before;
    if (ReadFileStat(file, &before)) kept = before.creation;
  }
  if (times.access || times.modification) {
    const timespec specs[2] = {ToTimespec(times.access), ToTimespec(times.modification)};
    if ((file.fd >= 0 ? futimens(file.fd, specs) : utimensat(AT_FDCWD, file.path, specs, 0)) != 0) return false;
  }
  FileTimes effective = times;
  if (!effective.creation) effective.creation = kept;
  if (!effective.creation) return true;
  std::optional<std::uint64_t> store = effective.creation;
  if (CreationShowsByItself(file, effective, fresh)) store.reset();
  if (store == extra.creation) return true;
  if (fresh) extra = ReadFileExtra(file);
  extra.creation = store;
  return WriteFileExtra(file, extra);
}

bool HoldCreation(FileRef file, const FileStat& stat) {
  FileExtra extra = ReadFileExtra(file);
  extra.creation = stat.creation;
  return WriteFileExtra(file, extra);
}

}  // namespace winhost
