// A Linux process that is nobody's child: it outlives the one that started it and leaves no zombie.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

namespace winhost {

struct SpawnPlan {
  int program = -1;  // descriptor of an ELF file
  std::vector<std::string> arguments;
  std::vector<std::string> environment;  // "NAME=value"; kReadyVariable is added
  std::filesystem::path directory;
};

// Names the descriptor that a winhost program closes when it is up.
inline constexpr const char* kReadyVariable = "VANTA_READY_FD";

// The process id, or minus errno when it could not be started. Waits until the program has closed the descriptor (a
// winhost program when it is up, any other when it ends), or for `up_within_ms` real milliseconds.
pid_t SpawnDetached(const SpawnPlan& plan, int up_within_ms);

// Until the process of that id is gone, or for as many real milliseconds: its descriptors are closed a moment before.
void AwaitEnd(pid_t process, int milliseconds);

}  // namespace winhost
