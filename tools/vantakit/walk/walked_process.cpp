#include "tools/vantakit/walk/walked_process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <vector>

#include "tools/vantakit/commands.h"
#include "tools/vantakit/walk/walked.h"

namespace vantakit {
namespace {

bool IsReplaced(const std::string& variable) {
  for (const char* const name : {"VANTA_IMAGE=", "VANTA_COMMAND_LINE=", "VANTA_WALK="}) {
    if (variable.starts_with(name)) return true;
  }
  return false;
}

std::vector<std::string> Environment(const std::string& image, const std::string& words, int socket) {
  std::vector<std::string> variables;
  for (char** each = environ; *each; ++each) {
    if (!IsReplaced(*each)) variables.emplace_back(*each);
  }
  variables.push_back("VANTA_IMAGE=" + image);
  variables.push_back("VANTA_COMMAND_LINE=\"" + image + "\"" + (words.empty() ? "" : " ") + words);
  variables.push_back(std::string(kWalkVariable) + "=" + std::to_string(socket));
  return variables;
}

// Nothing comes from the script's input or goes between the walk's lines.
class Streams {
 public:
  Streams() {
    posix_spawn_file_actions_init(&actions_);
    posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions_, STDERR_FILENO, STDOUT_FILENO);
  }
  ~Streams() { posix_spawn_file_actions_destroy(&actions_); }
  Streams(const Streams&) = delete;
  Streams& operator=(const Streams&) = delete;
  const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_;
};

pid_t Spawn(const std::vector<std::string>& environment) {
  std::vector<char*> variables;
  for (const std::string& variable : environment) variables.push_back(const_cast<char*>(variable.c_str()));
  variables.push_back(nullptr);
  char name[] = "setup";
  char* const arguments[] = {name, nullptr};
  pid_t process = 0;
  const Streams streams;
  const int error = posix_spawn(&process, "/proc/self/exe", streams.get(), nullptr, arguments, variables.data());
  if (error) throw Failure(std::string("the setup cannot be started: ") + std::strerror(error));
  return process;
}

bool EndsBy(pid_t process, WalkedProcess::Clock::time_point deadline) {
  // By number: not every C library has a function for it that C++ can call.
  const int watched = static_cast<int>(syscall(SYS_pidfd_open, process, 0));
  if (watched < 0) return false;
  pollfd wanted{watched, POLLIN, 0};
  int ready = -1;
  while (ready < 0) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - WalkedProcess::Clock::now()).count();
    ready = poll(&wanted, 1, static_cast<int>(std::clamp<long long>(left, 0, 3'600'000)));
    if (ready < 0 && errno != EINTR) break;
  }
  close(watched);
  return ready > 0;
}

}  // namespace

WalkedProcess::WalkedProcess(const std::string& image, const std::string& words, Beside beside) {
  int ends[2] = {-1, -1};
  if (beside == Beside::Walker) {
    if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends) != 0) throw Failure("no channel to the setup can be made");
    fcntl(ends[0], F_SETFD, FD_CLOEXEC);
  }
  channel_ = std::make_unique<LineChannel>(ends[0]);
  const LineChannel other(ends[1]);  // closed on this side when it has been handed on
  process_ = Spawn(Environment(image, words, ends[1]));
  running_ = true;
}

WalkedProcess::~WalkedProcess() {
  if (!running_) return;
  kill(process_, SIGKILL);
  waitpid(process_, &status_, 0);
}

bool WalkedProcess::AwaitEnd(Clock::time_point deadline) {
  if (running_ && !EndsBy(process_, deadline)) return false;
  if (running_) waitpid(process_, &status_, 0);
  running_ = false;
  return true;
}

int WalkedProcess::ExitCode() const {
  if (WIFSIGNALED(status_)) throw Failure("the setup was ended by signal " + std::to_string(WTERMSIG(status_)));
  // Linux keeps eight bits of it.
  return static_cast<signed char>(WEXITSTATUS(status_));
}

}  // namespace vantakit
