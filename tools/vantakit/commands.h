// The toolbox's commands. A new one is a function and a row in main.cpp.
#pragma once

#include <stdexcept>
#include <string>

namespace vantakit {

struct Command {
  const char* name;
  const char* summary;  // one line for the list
  // argv[0] is the command's name. The result is the exit code: 0 good, 1 findings or differences, 2 wrong arguments.
  // A Failure is printed and ends the program with 1.
  int (*run)(int argc, char** argv);
};

// What could not be done, in words for the one who called; printed with "vantakit: " before it.
struct Failure : std::runtime_error {
  using std::runtime_error::runtime_error;
};
// Wrong arguments: ends with 2 and a hint at the command's --help.
struct WrongArguments : Failure {
  using Failure::Failure;
};

int RunPack(int argc, char** argv);
int RunCheck(int argc, char** argv);
int RunWrap(int argc, char** argv);
int RunView(int argc, char** argv);
int RunMachine(int argc, char** argv);
int RunPreview(int argc, char** argv);
int RunWalk(int argc, char** argv);

}  // namespace vantakit
