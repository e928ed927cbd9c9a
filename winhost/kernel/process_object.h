// What stands behind a process handle.
#pragma once

#include "winhost/kernel/process_table.h"
#include "winhost/kernel/waitable.h"

namespace winhost {

class Process final : public Waitable {
 public:
  Process(ProcessEntry entry, DWORD access) : entry_(std::move(entry)), access_(access) {}
  bool Signalled() override;
  bool Polled() const override { return true; }

  const ProcessEntry& entry() const { return entry_; }
  bool Allows(DWORD access) const { return (access_ & access) == access; }

 private:
  const ProcessEntry entry_;
  const DWORD access_;
};

std::shared_ptr<Process> ThisProcess();
// The process behind a handle (the pseudo-handle too) that has all of `access`; null with ERROR_INVALID_HANDLE or
// ERROR_ACCESS_DENIED.
std::shared_ptr<Process> ProcessOf(HANDLE handle, DWORD access);

}  // namespace winhost
