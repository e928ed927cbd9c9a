// The Linux entry of every program of a machine.
#include <windows.h>

#include "winhost/kernel/program.h"

int main() { return winhost::RunProgram(&wWinMain); }
