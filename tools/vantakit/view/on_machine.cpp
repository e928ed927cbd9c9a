#include "tools/vantakit/view/on_machine.h"

#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "winhost/machine/machine.h"

namespace vantakit {
namespace {

using Json = nlohmann::json;
namespace fs = std::filesystem;

struct Pipe {
  int ends[2] = {-1, -1};
  Pipe() {
    if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  }
  ~Pipe() {
    Close(0);
    Close(1);
  }
  void Close(int end) {
    if (ends[end] >= 0) close(ends[end]);
    ends[end] = -1;
  }
};

// Sends one request to a view process that lives on the machine; its answer line.
std::string AskOn(const fs::path& machine, const std::string& request) {
  Pipe to, from;
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("no process");
  if (child == 0) {
    dup2(to.ends[0], STDIN_FILENO);
    dup2(from.ends[1], STDOUT_FILENO);
    for (Pipe* pipe : {&to, &from}) {
      pipe->Close(0);
      pipe->Close(1);
    }
    setenv("VANTA_MACHINE", machine.c_str(), 1);
    unsetenv("VANTA_IMAGE");
    execl("/proc/self/exe", "vantakit", "view", "--here", static_cast<char*>(nullptr));
    _exit(127);
  }
  to.Close(0);
  from.Close(1);
  [[maybe_unused]] const ssize_t written = write(to.ends[1], request.data(), request.size());
  to.Close(1);
  std::string answer;
  char buffer[4096];
  for (ssize_t got; (got = read(from.ends[0], buffer, sizeof buffer)) > 0;)
    answer.append(buffer, static_cast<size_t>(got));
  waitpid(child, nullptr, 0);
  return answer;
}

}  // namespace

Json AnswerOn(const std::string& op, const Json& input, Json (*here)()) {
  const fs::path machine = input.at("machine").get<std::string>();
  std::error_code error;
  if (!fs::is_directory(machine / "C", error)) throw std::runtime_error(machine.string() + " is no machine folder");
  if (fs::equivalent(machine, winhost::Machine::Current().folder(), error)) return here();
  const Json request = {{"op", op}, {"input", {{"machine", fs::absolute(machine).string()}}}};
  const Json answer = Json::parse(AskOn(fs::absolute(machine), request.dump() + "\n"));
  if (answer.contains("error")) throw std::runtime_error(answer["error"].get<std::string>());
  return answer.at("output");
}

}  // namespace vantakit
