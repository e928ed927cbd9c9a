#include <clocale>
#include <cstdio>
#include <cstring>
#include <exception>
#include <string_view>

#include "tools/vantakit/commands.h"
#include "tools/vantakit/walk/walked.h"

namespace {

using vantakit::Command;

constexpr Command kCommands[] = {
    {"pack", "make a finished setup of a bare one, a payload folder and a skin folder", vantakit::RunPack},
    {"check", "tell what in a payload or skin folder will not work", vantakit::RunCheck},
    {"preview", "draw a layout of a skin, or open it in a window that follows changes", vantakit::RunPreview},
    {"walk", "play a script against the real windows of a setup", vantakit::RunWalk},
    {"wrap", "give a Linux program or library the form of a Windows image", vantakit::RunWrap},
    {"machine", "make a machine folder, show what it holds, compare two", vantakit::RunMachine},
    {"view", "answer JSON requests about single functions of the setup, one a line", vantakit::RunView},
};

void PrintHelp(std::FILE* out) {
  std::fputs("vantakit: the toolbox of those who make setups and skins\n\nusage: vantakit COMMAND [ARGUMENTS]\n\n",
             out);
  for (const Command& command : kCommands) std::fprintf(out, "  %-8s %s\n", command.name, command.summary);
  std::fputs("\n`vantakit COMMAND --help` tells more.\n", out);
}

int Run(const Command& command, int argc, char** argv) {
  try {
    return command.run(argc, argv);
  } catch (const vantakit::WrongArguments& wrong) {
    std::fprintf(stderr, "vantakit %s: %s\n`vantakit %s --help` lists the arguments.\n", command.name, wrong.what(),
                 command.name);
    return 2;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "vantakit %s: %s\n", command.name, failure.what());
    return 1;
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (vantakit::IsWalked()) return vantakit::RunWalked();
  std::setlocale(LC_CTYPE, "C.UTF-8");  // file names are UTF-8 whatever the terminal speaks
  const std::string_view name = argc > 1 ? argv[1] : "";
  if (name == "help" || name == "--help" || name == "-h") {
    PrintHelp(stdout);
    return 0;
  }
  for (const Command& command : kCommands) {
    if (name == command.name) return Run(command, argc - 1, argv + 1);
  }
  if (!name.empty()) std::fprintf(stderr, "vantakit: no command named \"%s\"\n\n", argv[1]);
  PrintHelp(stderr);
  return 2;
}
