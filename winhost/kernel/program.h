// The program that this process runs.
#pragma once

#include <minwindef.h>

#include <string>

namespace winhost {

// Its Windows path: what its launcher said (VANTA_IMAGE), else the Linux executable's, which lies on drive Z: unless it
// is in the machine's folder.
std::u16string ProgramPath();

// The life of a program of the machine, around its wWinMain: it enters the process table, keeps its file from being
// deleted, tells its launcher that it is up, and journals its exit code in "exits". The result is wWinMain's own. Does
// not return when threads of the program still run: they end with the process.
using WinMain = int(WINAPI*)(HINSTANCE instance, HINSTANCE previous, LPWSTR command_line, int show);
int RunProgram(WinMain win_main);
// The exit in journal and process table.
void RecordProgramExit(int code);

}  // namespace winhost
