#include "tools/vantakit/walk/walked.h"

#include <windows.h>

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <memory>
#include <string>
#include <thread>

#include "app/process.h"
#include "tools/vantakit/walk/walker.h"
#include "winhost/kernel/program.h"

namespace vantakit {
namespace {

int WINAPI RunSetup(HINSTANCE, HINSTANCE, LPWSTR, int) { return vanta::RunProcess(); }

}  // namespace

bool IsWalked() { return getenv(kWalkVariable) != nullptr; }

int RunWalked() {
  const int socket = std::atoi(getenv(kWalkVariable));
  unsetenv(kWalkVariable);  // what the setup starts is not walked
  if (socket < 0) return winhost::RunProgram(&RunSetup);
  fcntl(socket, F_SETFD, FD_CLOEXEC);
  Walker walker(socket, GetCurrentThreadId());
  std::thread thread([&] { walker.Run(); });
  const int code = winhost::RunProgram(&RunSetup);
  walker.End();
  thread.join();
  return code;
}

}  // namespace vantakit
