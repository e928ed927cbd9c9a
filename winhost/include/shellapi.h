// Starting programs through the shell, and splitting command lines.
//
// Promises: programs of the machine are really started (see winhost/kernel/launch.h); web addresses and folders count
// as opened by the shell's own means. Everything asked for is journalled in "launches", whether it could be started or
// not. Simplifies: documents have no association (SE_ERR_NOASSOC); bare names are looked for in the current and the
// system folders. To fail: the fault plan: "ShellExecuteW" (subject: the file), "CommandLineToArgvW".
#pragma once

#include <windef.h>

#define SE_ERR_FNF 2
#define SE_ERR_PNF 3
#define SE_ERR_ACCESSDENIED 5
#define SE_ERR_OOM 8
#define SE_ERR_SHARE 26
#define SE_ERR_NOASSOC 31

// Above 32: success; else one of the codes above or ERROR_BAD_FORMAT, and the last error says more.
HINSTANCE WINAPI ShellExecuteW(HWND owner, LPCWSTR verb, LPCWSTR file, LPCWSTR parameters, LPCWSTR directory, int show);
// One block, freed with LocalFree. An empty command line gives the program's own path. Null on failure.
LPWSTR* WINAPI CommandLineToArgvW(LPCWSTR command_line, int* count);
