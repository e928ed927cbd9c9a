// The .job file of the first scheduler, little-endian:
//
//   68  fixed: version of Windows, 1, GUID, offsets of the program's name and of the triggers, retries, idle times,
//       priority, longest run time, exit code, status, flags, last run
//   var u16 running instances; texts (u16 count with terminator, or 0; UTF-16): program, arguments, folder, author,
//   comment;
//       user data (u16 0); u16 8 and 8 reserved bytes
//   var u16 count of triggers, each 48 bytes as TASK_TRIGGER lies in memory
#pragma once

#include <windows.h>
#include <mstask.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace winhost {

struct JobFile {
  std::uint16_t windows_version = 0x0501;  // major in the high byte
  GUID id{};
  std::uint32_t priority = 0x20;  // NORMAL_PRIORITY_CLASS
  std::uint32_t max_run_ms = 72 * 3600 * 1000;
  std::uint32_t flags = 0;  // TASK_FLAG_…
  std::u16string program, arguments, working_directory, author, comment;
  std::vector<TASK_TRIGGER> triggers;
};

// Texts beyond 65,534 characters are cut.
std::string WriteJob(const JobFile& job);
// None when the bytes are no job file or end early.
std::optional<JobFile> ReadJob(std::string_view bytes);

}  // namespace winhost
