// The machine's running programs: <machine>/.processes holds a record each, named by process id and start time, so that
// a reused id is no resurrection. Records of the dead are kept for a while because they hold exit codes.
#pragma once

#include <cstdint>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "winhost/machine/machine.h"

namespace winhost {

struct ProcessEntry {
  std::uint32_t id = 0;
  std::uint64_t start = 0;   // Linux clock ticks since boot
  std::uint32_t parent = 0;  // 0: none of the machine's
  std::u16string image;      // Windows path; empty for the system's own two
  bool made_up = false;      // there by the facts alone
  bool own_exit = false;     // writes its exit code itself; without one it has crashed
};

constexpr std::uint32_t kFirstMadeUpId = 0x40000000;
constexpr std::uint32_t kStillActive = 0x103;
constexpr std::uint32_t kCrashed = 0xC0000005;

class ProcessTable {
 public:
  // Enters this process.
  explicit ProcessTable(Machine& machine);

  // Enters or updates a running Linux process; nothing happens when it is gone already.
  void Enter(std::uint32_t id, const std::u16string& image, bool own_exit);
  // All that run: the system's two, the real ones by id, the made-up ones.
  std::vector<ProcessEntry> Running() const;
  std::optional<ProcessEntry> Find(std::uint32_t id) const;
  bool Alive(const ProcessEntry& process) const;
  void RecordExit(const ProcessEntry& process, std::uint32_t code);
  // kStillActive while it runs.
  std::uint32_t ExitCode(const ProcessEntry& process) const;

 private:
  std::filesystem::path RecordOf(const ProcessEntry& process) const;
  std::filesystem::path ExitOf(const ProcessEntry& process) const;
  void DropOldRecords() const;

  Machine& machine_;
  std::filesystem::path folder_;
};

}  // namespace winhost
