// What is scheduled on a machine, for tools and tests: the tasks of both schedulers, read from their files.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "winhost/machine/machine.h"

namespace winhost {

struct StoredTask {
  int version = 2;      // of the scheduler
  std::u16string name;  // "VantaPictorUpdate", "Folder\\Task"
  std::filesystem::path file;
  bool readable = true;  // false: the file is no task; what follows is then empty
  std::u16string program, arguments, working_directory, description, author;
  std::u16string principal;   // group, user or account as it was named
  std::u16string run_level;   // "highest" or "least"; version 1: empty
  std::u16string logon_type;  // "group", "interactive token" …; version 1: empty
  bool start_when_available = false;
  std::uint32_t flags = 0;  // version 1: TASK_FLAG_…
  // Of the first trigger. Version 1 has its boundary without seconds ("2024-03-05T14:07:00") and intervals in minutes
  // ("PT60M"), and says what kind it is ("daily").
  std::size_t triggers = 0;
  std::u16string trigger_type;
  std::u16string start_boundary, interval, duration;
  std::uint32_t days_interval = 0;  // daily triggers of version 1
};

// Version 2 first, each by name.
std::vector<StoredTask> ListTasks(const Machine& machine);

}  // namespace winhost
