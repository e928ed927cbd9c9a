// A file's Windows side: attributes, times and size, as kept on a Linux file system.
//
// A plain file needs nothing kept: ARCHIVE is the default, READONLY is a missing owner-write bit, and the creation time
// is the earlier of birth and modification. What differs goes into the extended attribute "user.vanta.file", or where
// the file system refuses those, into <machine>/.extra/, a small file named by device, inode and birth time.
#pragma once

#include <minwindef.h>

#include <cstdint>
#include <optional>
#include <string>

namespace winhost {

// What a Linux file system has no place for.
struct FileExtra {
  DWORD set = 0;                          // FILE_ATTRIBUTE_* that are on beyond the default
  DWORD cleared = 0;                      // FILE_ATTRIBUTE_ARCHIVE when a file lacks it
  std::optional<std::uint64_t> creation;  // 100 ns since 1601
  bool IsDefault() const { return set == 0 && cleared == 0 && !creation; }
};

struct FileStat {
  bool directory = false;
  bool regular = false;
  DWORD attributes = 0;
  std::uint64_t size = 0;
  std::uint64_t creation = 0;  // times in 100 ns since 1601, UTC
  std::uint64_t access = 0;
  std::uint64_t modification = 0;
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  DWORD links = 1;
  bool creation_moves = false;  // the creation time shows through the modification time, and writing would move it
};

// One file on disk: by descriptor (path then serves nothing), or by path when fd is -1.
struct FileRef {
  int fd = -1;
  const char* path = nullptr;
};

// False with errno set when there is no such file. Links are followed.
bool ReadFileStat(FileRef file, FileStat* stat);
FileExtra ReadFileExtra(FileRef file);
bool WriteFileExtra(FileRef file, const FileExtra& extra);

// Sets attributes as SetFileAttributesW does: the settable bits replace the old ones, the creation time stays.
bool WriteFileAttributes(FileRef file, bool directory, DWORD attributes);

// Keeps the creation time of a file that is about to be written to (creation_moves).
bool HoldCreation(FileRef file, const FileStat& stat);

// Sets those of the three times that are given. `fresh` promises that this process has just made the file, which spares
// reading anything back.
struct FileTimes {
  std::optional<std::uint64_t> creation, access, modification;
};
bool WriteFileTimes(FileRef file, const FileTimes& times, bool fresh);

std::uint64_t FromUnixTime(std::int64_t seconds, std::uint32_t nanoseconds);

constexpr DWORD kSettableAttributes = 0x0001 | 0x0002 | 0x0004 | 0x0020 | 0x0100 | 0x1000 | 0x2000;

}  // namespace winhost
