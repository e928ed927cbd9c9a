// A setup process of the machine, seen from the walk.
#pragma once

#include <sys/types.h>

#include <memory>
#include <string>

#include "tools/vantakit/walk/line_channel.h"

namespace vantakit {

enum class Beside { Walker, Nobody };

class WalkedProcess {
 public:
  using Clock = LineChannel::Clock;

  // Starts it: this program as the setup whose Windows path is `image`, in the machine that the environment names.
  // Throws Failure.
  WalkedProcess(const std::string& image, const std::string& words, Beside beside);
  // Ends it, if it still runs.
  ~WalkedProcess();
  WalkedProcess(const WalkedProcess&) = delete;
  WalkedProcess& operator=(const WalkedProcess&) = delete;

  LineChannel& Channel() { return *channel_; }
  // False when it still runs at the deadline.
  bool AwaitEnd(Clock::time_point deadline);
  // After its end: the exit code as Windows has it. Throws Failure when a signal ended it.
  int ExitCode() const;

 private:
  pid_t process_ = 0;
  bool running_ = false;
  int status_ = 0;
  std::unique_ptr<LineChannel> channel_;
};

}  // namespace vantakit
