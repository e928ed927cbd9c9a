#include "winhost/kernel/file_object.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "winhost/machine/clock.h"

namespace winhost {

bool HasOwnClock(const Machine& machine) {
  const ClockFacts& clock = machine.facts().clock;
  return !clock.at.empty() || clock.stands || clock.speed != 1;
}

void FileObject::FollowMachineClock() {
  if (!written_.load(std::memory_order_relaxed) || times_set_.load(std::memory_order_relaxed)) return;
  if (!HasOwnClock(Machine::Current())) return;
  const std::uint64_t now = MachineTime100ns();
  WriteFileTimes({fd_, nullptr}, {std::nullopt, now, now}, false);
}

FileObject::~FileObject() {
  FollowMachineClock();
  struct stat stat;
  const bool deletes = slot_ != ShareTable::kNoSlot && table_->Close(slot_);
  if (deletes && unlinkat(place_.folder->fd(), place_.on_disk.c_str(), 0) == 0) {
    FileSystem& files = FileSystem::Current();
    if (fstat(fd_, &stat) == 0) files.TakeBytes(place_.folder->drive(), -stat.st_size);
    files.Removed(place_);
  }
  close(fd_);
}

}  // namespace winhost
