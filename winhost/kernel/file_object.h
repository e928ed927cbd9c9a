// What a file handle stands for.
#pragma once

#include <atomic>
#include <memory>
#include <string>

#include "winhost/kernel/devices.h"
#include "winhost/kernel/file_system.h"
#include "winhost/kernel/object.h"

namespace winhost {

class FileObject final : public KernelObject {
 public:
  FileObject(int fd, DWORD access, Place place) : fd_(fd), access_(access), place_(std::move(place)) {}
  // Closes the descriptor, gives the share-table slot back and carries out a deletion that waited for it.
  ~FileObject() override;
  bool Wait(std::uint64_t) override { return true; }

  int fd() const { return fd_; }
  bool MayRead() const { return (access_ & FileAccess::kRead) != 0; }
  bool MayWrite() const { return (access_ & (FileAccess::kWrite | FileAccess::kAppend)) != 0; }
  bool AppendsOnly() const { return (access_ & (FileAccess::kWrite | FileAccess::kAppend)) == FileAccess::kAppend; }
  bool MayWriteAttributes() const { return (access_ & FileAccess::kWriteAttributes) != 0; }
  bool IsFolder() const { return folder_; }
  bool IsNull() const { return null_; }
  const Place& place() const { return place_; }
  // Full Windows path, made on each call.
  std::u16string path() const { return place_.folder ? place_.WindowsPath() : std::u16string(u"NUL"); }

  void SetFolder() { folder_ = true; }
  void SetNull() { null_ = true; }
  void SetFresh() { fresh_.store(true, std::memory_order_relaxed); }
  // Whether this handle made the file and nothing but its data was changed since; from then on something may have been.
  bool TakeFresh() { return fresh_.exchange(false, std::memory_order_relaxed); }
  void SetSlot(std::shared_ptr<ShareTable> table, std::uint32_t slot) {
    table_ = std::move(table);
    slot_ = slot;
  }
  void DeleteOnClose() { table_->DeleteOnClose(slot_); }
  // Writing moves the modification time, unless somebody set it through this handle.
  void NoteWritten() { written_.store(true, std::memory_order_relaxed); }
  void NoteTimesSet() { times_set_.store(true, std::memory_order_relaxed); }

  struct FileAccess {
    static constexpr DWORD kRead = 0x0001, kWrite = 0x0002, kAppend = 0x0004, kExecute = 0x0020;
    static constexpr DWORD kReadAttributes = 0x0080, kWriteAttributes = 0x0100, kDelete = 0x00010000;
  };

 private:
  void FollowMachineClock();

  int fd_;
  DWORD access_;  // generic bits already spelt out
  Place place_;   // no folder: a device
  std::shared_ptr<ShareTable> table_;
  std::uint32_t slot_ = ShareTable::kNoSlot;
  bool folder_ = false;
  bool null_ = false;
  std::atomic<bool> fresh_{false};
  std::atomic<bool> written_{false};
  std::atomic<bool> times_set_{false};
};

class DeviceObject final : public KernelObject {
 public:
  explicit DeviceObject(std::shared_ptr<Device> opened) : device(std::move(opened)) {}
  const std::shared_ptr<Device> device;
};

// A machine whose clock is not the Linux one: files are then stamped by hand.
bool HasOwnClock(const Machine& machine);

}  // namespace winhost
