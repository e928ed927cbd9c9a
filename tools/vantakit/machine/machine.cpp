#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tools/vantakit/commands.h"
#include "tools/vantakit/machine/diff.h"
#include "tools/vantakit/machine/print.h"
#include "tools/vantakit/machine/state.h"
#include "winhost/machine/facts.h"
#include "winhost/machine/machine.h"
#include "winhost/shell/folder_layout.h"

namespace vantakit {
namespace {

namespace fs = std::filesystem;

constexpr char kHelp[] =
    "usage: vantakit machine new FACTS.json DIR        make a machine with these facts\n"
    "       vantakit machine show [--json] DIR         what it holds\n"
    "       vantakit machine diff [--json] DIR DIR     what the second has otherwise than the first\n"
    "\n"
    "  --json          for programs; docs/machine-show.md lists the fields\n"
    "  --colour WHEN   auto (on a terminal), always or never\n"
    "\n"
    "`show` waits up to five seconds for programs that still run on the machine. FACTS.json may be - for none.\n";

struct Options {
  bool json = false;
  Colour colour = Colour::Auto;
  std::vector<std::string> words;
};

Options ReadOptions(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    const std::string word = argv[i];
    if (word == "--json") {
      options.json = true;
    } else if ((word == "--colour" || word == "--color") && i + 1 < argc) {
      const std::string when = argv[++i];
      if (when != "auto" && when != "always" && when != "never")
        throw WrongArguments("--colour takes auto, always or never");
      options.colour = when == "always" ? Colour::Always : when == "never" ? Colour::Never : Colour::Auto;
    } else if (word.size() > 1 && word[0] == '-' && word != "-") {
      throw WrongArguments("no option named " + word);
    } else {
      options.words.push_back(word);
    }
  }
  return options;
}

nlohmann::json StateOf(const fs::path& folder) {
  if (!fs::is_directory(folder / "C")) throw Failure(folder.string() + " is no machine folder");
  winhost::MachineScope scope(folder);
  WaitForPrograms(5000);
  return MachineState();
}

std::string Dump(const nlohmann::json& value) {
  return value.dump(2, ' ', false, nlohmann::json::error_handler_t::replace);
}

int New(const Options& options) {
  if (options.words.size() != 3) throw WrongArguments("new takes a facts file and a folder");
  std::string facts = "{}\n";
  if (options.words[1] != "-") {
    std::ifstream file(options.words[1], std::ios::binary);
    if (!file) throw Failure("cannot read " + options.words[1]);
    facts.assign(std::istreambuf_iterator<char>(file), {});
  }
  winhost::ParseFacts(facts);  // throws with the wrong key's name
  const fs::path folder = options.words[2];
  if (fs::exists(folder) && !fs::is_empty(folder)) throw Failure(folder.string() + " is not empty");
  fs::create_directories(folder);
  std::ofstream(folder / "machine.json", std::ios::binary) << facts;
  winhost::MachineScope scope(folder);
  winhost::MakeStandardFolders(scope.machine());
  return 0;
}

int Show(const Options& options) {
  if (options.words.size() != 2) throw WrongArguments("show takes a folder");
  const nlohmann::json state = StateOf(options.words[1]);
  if (options.json) {
    std::puts(Dump(state).c_str());
  } else {
    PrintState(state, options.colour);
  }
  return 0;
}

int Diff(const Options& options) {
  if (options.words.size() != 3) throw WrongArguments("diff takes two folders");
  const nlohmann::json difference = DiffStates(StateOf(options.words[1]), StateOf(options.words[2]));
  if (options.json) {
    std::puts(Dump(difference).c_str());
  } else {
    PrintDifference(difference, options.colour);
  }
  return difference.empty() ? 0 : 1;
}

}  // namespace

int RunMachine(int argc, char** argv) {
  if (argc > 1 && (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0)) {
    std::fputs(kHelp, stdout);
    return 0;
  }
  const Options options = ReadOptions(argc, argv);
  const std::string what = options.words.empty() ? "" : options.words[0];
  if (what == "new") return New(options);
  if (what == "show") return Show(options);
  if (what == "diff") return Diff(options);
  throw WrongArguments(what.empty() ? "new, show or diff?" : "no machine command named " + what);
}

}  // namespace vantakit
