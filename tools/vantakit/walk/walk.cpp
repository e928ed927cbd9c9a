// vantakit walk: plays a script against the real windows of a setup.
#include <cstdio>
#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>

#include "tools/vantakit/arguments.h"
#include "tools/vantakit/commands.h"
#include "tools/vantakit/walk/look.h"
#include "tools/vantakit/walk/step.h"
#include "tools/vantakit/walk/walk_machine.h"
#include "tools/vantakit/walk/walked_process.h"

namespace vantakit {
namespace {

using Json = nlohmann::ordered_json;
using Clock = WalkedProcess::Clock;

constexpr char kHelp[] =
    "Plays a script against the real windows of a setup, off-screen (or on the X display, with VANTA_DISPLAY=x11), "
    "and\n"
    "prints what is to be seen after each step as a line of JSON, then {\"exit\": the setup's exit code}. Its own "
    "exit\n"
    "code is 0 when every step was done.\n\n"
    "usage: vantakit walk SCRIPT [--setup FILE] [--machine DIR] [-- SETUP WORDS…]\n\n"
    "SCRIPT is a file, or - for standard input: a step a line, each a JSON object; empty lines and those that begin\n"
    "with # are passed over. \"timeout\" in a step gives it other than 30 real seconds. docs/walks.md tells more.\n\n";
constexpr char kConditions[] =
    "\nConditions: open, closed, page NAME, tip, no tip, message, no message, folder, no folder, progress N,\n"
    "enabled NAME, disabled NAME, active, minimised, file PATH.\n";
constexpr Option kOptions[] = {
    {"setup", Option::Value, "FILE", "a packed setup (default: VantaPictorSetup.exe beside this program)"},
    {"machine", Option::Value, "DIR", "the machine (default: a plain one, gone afterwards)"},
};
// Beyond a step's own time-out, before a setup that says nothing at all is given up.
constexpr std::chrono::seconds kGrace(10);

void Print(const Json& line) {
  std::printf("%s\n", line.dump().c_str());
  std::fflush(stdout);
}

class Walk {
 public:
  Walk(const std::string& image, const std::string& words) : image_(image), process_(image, words, Beside::Walker) {}

  bool Play(std::istream& script) {
    Json step;
    try {
      Ask({{"wait", "open"}});
      for (std::string line; std::getline(script, line);) {
        if (line.empty() || line.starts_with("#")) continue;
        step = ParseStep(line);
        Json said = {{"step", step}};
        said.update(Do(step));
        Print(said);
      }
      step = {{"wait", "closed"}};
      AwaitEnd(step);
      Print({{"exit", process_.ExitCode()}});
      return true;
    } catch (const Failure& failure) {
      Json said = {{"error", failure.what()}, {"step", step}};
      if (!seen_.is_null()) said["seen"] = seen_;
      Print(said);
      return false;
    }
  }

 private:
  Json Do(const Json& step) {
    if (step.contains("start")) return Start(step);
    if (step.value("wait", Json()) == "closed") return AwaitEnd(step);
    if (ended_) throw Failure("the setup has ended");
    const Json seen = Ask(step);
    if (ended_ && !IsAction(step)) throw Failure("the setup has ended meanwhile");
    return seen;
  }

  // What the walker sees once the step is done, or nothing when the setup ends of it.
  Json Ask(const Json& step) {
    std::string line;
    if (!process_.Channel().Send(step.dump())) return Ended();
    switch (process_.Channel().Receive(&line, Clock::now() + TimeoutOf(step) + kGrace)) {
      case LineChannel::Got::Ended:
        return Ended();
      case LineChannel::Got::TooLate:
        throw Failure("the setup does not answer");
      case LineChannel::Got::Line:
        break;
    }
    const Json answer = Json::parse(line);
    seen_ = answer.value("seen", Json());
    if (answer.contains("error")) throw Failure(answer["error"].get<std::string>());
    Json said = seen_;
    if (IsAction(step)) said["ms"] = answer["ms"];
    return said;
  }

  Json Ended() {
    if (!process_.AwaitEnd(Clock::now() + kGrace)) throw Failure("the setup goes on without its window");
    ended_ = true;
    process_.ExitCode();
    return NothingSeen();
  }

  Json AwaitEnd(const Json& step) {
    if (!ended_) Ask({{"release", true}});
    if (!process_.AwaitEnd(Clock::now() + TimeoutOf(step))) throw Failure("the setup has not ended");
    return Ended();
  }

  // The window must be free to answer the second process.
  Json Start(const Json& step) {
    if (!ended_) Ask({{"release", true}});
    WalkedProcess second(image_, step["start"].get<std::string>(), Beside::Nobody);
    if (!second.AwaitEnd(Clock::now() + TimeoutOf(step))) throw Failure("the second setup has not ended");
    Json said = {{"started", second.ExitCode()}};
    said.update(ended_ ? NothingSeen() : Ask({{"look", true}}));
    return said;
  }

  const std::string image_;
  WalkedProcess process_;
  bool ended_ = false;
  Json seen_;
};

// Cuts what stands behind "--" off the arguments: the setup's words, as one command line.
std::string CutWords(int* argc, char** argv) {
  int end = 0;
  while (end < *argc && std::string_view(argv[end]) != "--") ++end;
  std::string words;
  for (int i = end + 1; i < *argc; ++i) {
    const std::string word = argv[i];
    words += (words.empty() ? "" : " ") + (word.find(' ') == word.npos ? word : "\"" + word + "\"");
  }
  *argc = end;
  return words;
}

}  // namespace

int RunWalk(int argc, char** argv) {
  const std::string words = CutWords(&argc, argv);
  if (AskedForHelp(argc, argv, kHelp, kOptions)) {
    std::printf("\nSteps:\n%s%s", ListKinds().c_str(), kConditions);
    return 0;
  }
  const Arguments arguments(kOptions, argc, argv);
  if (arguments.rest().size() != 1) throw WrongArguments("one SCRIPT is wanted");
  const std::string& name = arguments.rest().front();
  std::ifstream file;
  if (name != "-") file.open(name);
  if (name != "-" && !file) throw Failure(name + ": cannot be read");
  const auto beside = std::filesystem::read_symlink("/proc/self/exe").parent_path() / "VantaPictorSetup.exe";
  const WalkMachine machine(arguments.Get("machine"), arguments.Get("setup").value_or(beside.string()));
  return Walk(machine.Image(), words).Play(name == "-" ? std::cin : file) ? 0 : 1;
}

}  // namespace vantakit
