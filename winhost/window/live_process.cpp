#include "winhost/window/live_process.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace winhost {

std::uint64_t ProcessStartTicks(pid_t process) {
  char path[32], text[1024];
  std::snprintf(path, sizeof path, "/proc/%d/stat", process);
  const int file = open(path, O_RDONLY | O_CLOEXEC);
  if (file < 0) return 0;
  const ssize_t length = read(file, text, sizeof text - 1);
  close(file);
  if (length <= 0) return 0;
  text[length] = 0;
  // The second field is the program's name, which may hold anything; the fields after it are counted from its end.
  const char* rest = std::strrchr(text, ')');
  if (!rest || rest[1] == 0 || rest[2] == 'Z' || rest[2] == 'X') return 0;
  constexpr int kStartField = 22;
  for (int field = 2; field < kStartField; ++field) {
    rest = std::strchr(rest + 1, ' ');
    if (!rest) return 0;
  }
  return std::strtoull(rest, nullptr, 10);
}

}  // namespace winhost
