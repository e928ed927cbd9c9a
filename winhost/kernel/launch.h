// Starting programs of the machine.
//
// The file is a Linux program under a Windows name, or a PE file that carries one. It runs as a process of its own that
// outlives this one, on this machine, with its streams on /dev/null, and is in the process table when LaunchProgram
// returns; a program built on winhost has by then also taken hold of its file. On a machine whose fact `launches_wait`
// is true it has ended by then. In its environment:
//   VANTA_MACHINE        the machine's folder          VANTA_IMAGE   its Windows path
//   VANTA_COMMAND_LINE   its command line, verbatim    VANTA_SHOW    wWinMain's last argument
#pragma once

#include <minwindef.h>

#include <string>

namespace winhost {

struct LaunchRequest {
  std::u16string file;        // Windows path, absolute or relative to the current directory
  std::u16string parameters;  // verbatim
  std::u16string directory;   // current directory of the program; empty: this process's
  std::u16string verb;
  int show = 1;  // SW_SHOWNORMAL
  bool elevated = false;
  std::string by;  // who asked: "ShellExecuteW", "desktop shell" …
};

// Journals the attempt in "launches": {file, parameters, directory, verb, show, elevated, by, result (0 or the error),
// child (process id, when started)}. `error` (may be null) is set on failure: ERROR_FILE_NOT_FOUND,
// ERROR_PATH_NOT_FOUND, ERROR_DIRECTORY, ERROR_ACCESS_DENIED, ERROR_BAD_EXE_FORMAT, ERROR_NOT_ENOUGH_MEMORY. Planned
// fault: "LaunchProgram" (the file). Any thread; blocks until a program built on winhost is up, ten real seconds
// at most, or with `launches_wait` until the program has ended, sixty at most.
bool LaunchProgram(const LaunchRequest& request, DWORD* error);
// For what the shell opens, or refuses to open, without a program of the machine: the same line, without a child.
void JournalLaunch(const LaunchRequest& request, DWORD result);

}  // namespace winhost
