// The machine's table of open files, in memory that all its processes map: who has what open, and with which sharing.
// It decides ERROR_SHARING_VIOLATION, and remembers deletions that wait for the last handle.
//
// A file is known by its folder (device, inode) and its name without case, so that nothing need be asked of the file
// itself before it is made. Entries of processes that died are dropped when they would stand in the way.
#pragma once

#include <minwindef.h>

#include <cstdint>
#include <filesystem>
#include <string_view>

namespace winhost {

struct FileKey {
  std::uint64_t device = 0;
  std::uint64_t folder = 0;
  std::uint64_t name = 0;
  bool operator==(const FileKey&) const = default;
};
// A hash of the upper-cased name.
std::uint64_t HashName(std::u16string_view upcased);

enum ShareBits : std::uint8_t { kShareRead = 1, kShareWrite = 2, kShareDelete = 4 };

class ShareTable {
 public:
  struct Shared;
  static constexpr std::uint32_t kNoSlot = 0xFFFFFFFF;

  // Maps <folder>/.openfiles, making it where it is new.
  explicit ShareTable(const std::filesystem::path& folder);
  ~ShareTable();
  ShareTable(const ShareTable&) = delete;
  ShareTable& operator=(const ShareTable&) = delete;

  struct Request {
    FileKey key;
    std::uint8_t access;  // ShareBits that are asked for; 0 takes no part in sharing
    std::uint8_t share;   // ShareBits that others may have
    bool image = false;   // a running program or loaded library
  };
  // 0 and a slot, or ERROR_SHARING_VIOLATION, ERROR_ACCESS_DENIED (waits for its deletion), ERROR_TOO_MANY_OPEN_FILES.
  DWORD Open(const Request& request, std::uint32_t* slot);
  // Gives a slot back. True: it was the last one of a file that waits for its deletion, which is now the caller's to
  // do.
  bool Close(std::uint32_t slot);
  // Marks the slot's file for deletion when its last handle closes.
  void DeleteOnClose(std::uint32_t slot);

  // What stands in the way of deleting or moving a file: 0, ERROR_SHARING_VIOLATION or ERROR_ACCESS_DENIED. When the
  // file is open all the same (everyone shares deletion), `open` is true; with `mark` it is then marked for deletion.
  DWORD AskToDelete(const FileKey& key, bool mark, bool* open);
  DWORD AskToMove(const FileKey& key);
  bool IsOpen(const FileKey& key);
  // Whether any file directly in that folder is open.
  bool AnyOpenIn(std::uint64_t device, std::uint64_t folder);
  // Handles follow a moved file to its new key.
  void Move(const FileKey& from, const FileKey& to);

  // Counts changes to folders by this process; true when another process changed something since the last look. The
  // caller sees to it that one thread at a time calls these two.
  void CountChange();
  bool OthersChanged();

  // Bytes that writing has used up of drives whose free space is bounded. Negative after deletions.
  std::int64_t UsedBytes(char16_t drive) const;
  // False, with nothing taken, when fewer than `bytes` of `bound` are left. Negative gives back.
  bool TakeBytes(char16_t drive, std::int64_t bytes, std::uint64_t bound);

 private:
  class Lock;
  Shared* shared_;
  std::uint64_t changes_seen_;
};

}  // namespace winhost
