#include "winhost/kernel/spawn.h"

#include <errno.h>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <linux/close_range.h>

#include <utility>

namespace winhost {
namespace {

struct Pipe {
  Pipe() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) == 0) reading = ends[0], writing = ends[1];
  }
  ~Pipe() {
    CloseWriting();
    if (reading >= 0) close(reading);
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;
  void CloseWriting() {
    if (writing >= 0) close(std::exchange(writing, -1));
  }
  int reading = -1;
  int writing = -1;
};

std::vector<char*> Pointers(const std::vector<std::string>& words) {
  std::vector<char*> pointers;
  for (const std::string& word : words) pointers.push_back(const_cast<char*>(word.c_str()));
  pointers.push_back(nullptr);
  return pointers;
}

// Everything the children need, made beforehand: between fork and exec of a process with threads nothing may allocate.
struct Prepared {
  explicit Prepared(const SpawnPlan& spawn)
      : plan(spawn), environment(spawn.environment), directory(spawn.directory.string()) {
    environment.push_back(std::string(kReadyVariable) + "=" + std::to_string(ready.writing));
    argument_pointers = Pointers(plan.arguments);
    environment_pointers = Pointers(environment);
  }
  const SpawnPlan& plan;
  Pipe status;  // the process id, then errno if executing failed
  Pipe ready;   // closed by the program when it is up
  std::vector<std::string> environment;
  std::string directory;
  std::vector<char*> argument_pointers;
  std::vector<char*> environment_pointers;
};

void Tell(const Prepared& prepared, int value) {
  [[maybe_unused]] const ssize_t written = write(prepared.status.writing, &value, sizeof value);
}

void DetachStreams() {
  const int null = open("/dev/null", O_RDWR | O_CLOEXEC);
  for (int stream = 0; stream <= 2; ++stream) dup2(null, stream);
}

void ResetSignals() {
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  signal(SIGPIPE, SIG_DFL);
}

[[noreturn]] void Execute(const Prepared& prepared) {
  Tell(prepared, static_cast<int>(getpid()));
  DetachStreams();
  ResetSignals();
  close_range(3, ~0U, CLOSE_RANGE_CLOEXEC);
  fcntl(prepared.ready.writing, F_SETFD, 0);
  if (chdir(prepared.directory.c_str()) == 0) {
    fexecve(prepared.plan.program, prepared.argument_pointers.data(), prepared.environment_pointers.data());
  }
  Tell(prepared, errno);
  _exit(127);
}

// Run by the first child: its own child is taken over by the system as soon as it ends.
[[noreturn]] void StartSession(const Prepared& prepared) {
  setsid();
  const pid_t grandchild = _Fork();
  if (grandchild == 0) Execute(prepared);
  if (grandchild < 0) {
    Tell(prepared, 0);
    Tell(prepared, errno);
  }
  _exit(0);
}

int ReadInt(int descriptor, int otherwise) {
  int value = 0;
  ssize_t got;
  do {
    got = read(descriptor, &value, sizeof value);
  } while (got < 0 && errno == EINTR);
  return got == sizeof value ? value : otherwise;
}

void AwaitClosing(int descriptor, int milliseconds) {
  pollfd poll_for{descriptor, POLLIN, 0};
  while (poll(&poll_for, 1, milliseconds) < 0 && errno == EINTR) {
  }
}

}  // namespace

pid_t SpawnDetached(const SpawnPlan& plan, int up_within_ms) {
  Prepared prepared(plan);
  if (prepared.status.reading < 0 || prepared.ready.reading < 0) return -EMFILE;
  const pid_t child = fork();
  if (child == 0) StartSession(prepared);
  if (child < 0) return -errno;
  while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
  }
  prepared.status.CloseWriting();
  prepared.ready.CloseWriting();
  const int id = ReadInt(prepared.status.reading, 0);
  const int failure = ReadInt(prepared.status.reading, 0);
  if (failure || id == 0) return -(failure ? failure : EAGAIN);
  AwaitClosing(prepared.ready.reading, up_within_ms);
  return id;
}

void AwaitEnd(pid_t process, int milliseconds) {
  const int handle = static_cast<int>(syscall(SYS_pidfd_open, process, 0));
  if (handle < 0) return;  // gone
  AwaitClosing(handle, milliseconds);
  close(handle);
}

}  // namespace winhost
