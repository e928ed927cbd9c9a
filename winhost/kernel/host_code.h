// The Linux program or library that stands behind a file of the machine: the file itself when it is one, or what a PE
// file carries.
#pragma once

#include <minwindef.h>

#include <filesystem>
#include <optional>
#include <utility>

namespace winhost {

// A file descriptor that Linux can execute or load; move-only, closes itself.
class HostCode {
 public:
  explicit HostCode(int descriptor) : descriptor_(descriptor) {}
  HostCode(HostCode&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
  HostCode& operator=(HostCode&&) = delete;
  ~HostCode();
  int descriptor() const { return descriptor_; }

 private:
  int descriptor_;
};

// None with `error` set: ERROR_FILE_NOT_FOUND, ERROR_ACCESS_DENIED (unreadable, a folder), ERROR_BAD_EXE_FORMAT
// (neither Linux code nor a PE that carries some), ERROR_NOT_ENOUGH_MEMORY.
std::optional<HostCode> OpenHostCode(const std::filesystem::path& path, DWORD* error);

}  // namespace winhost
