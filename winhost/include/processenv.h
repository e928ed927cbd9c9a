// The process's command line, standard handles, current directory and environment.
//
// Variables are looked for, without case, among those this process set, the machine's facts ("environment"), those that
// every Windows process has (TEMP, USERNAME, SystemRoot …), and last in the Linux environment, whose own names (HOME,
// PWD and the like) stay hidden. The current directory is not changed on the Linux side. To make it fail: faults for
// SetCurrentDirectoryW and GetEnvironmentVariableW, subject the path or name.
#pragma once

#include <windef.h>

#define STD_INPUT_HANDLE ((DWORD)-10)
#define STD_OUTPUT_HANDLE ((DWORD)-11)
#define STD_ERROR_HANDLE ((DWORD)-12)

// The process's own; lives as long as the process.
LPWSTR WINAPI GetCommandLineW();
// Not to be closed.
HANDLE WINAPI GetStdHandle(DWORD which);

BOOL WINAPI SetCurrentDirectoryW(LPCWSTR path);
// Both answer the length without the terminator, or the length needed with it when the buffer is too small.
DWORD WINAPI GetCurrentDirectoryW(DWORD length, LPWSTR buffer);
// 0 with ERROR_ENVVAR_NOT_FOUND when there is no such variable.
DWORD WINAPI GetEnvironmentVariableW(LPCWSTR name, LPWSTR buffer, DWORD length);
BOOL WINAPI SetEnvironmentVariableW(LPCWSTR name, LPCWSTR value);
// The length needed, terminator included.
DWORD WINAPI ExpandEnvironmentStringsW(LPCWSTR from, LPWSTR to, DWORD length);

#define GetCurrentDirectory GetCurrentDirectoryW
#define SetCurrentDirectory SetCurrentDirectoryW
#define GetEnvironmentVariable GetEnvironmentVariableW
#define SetEnvironmentVariable SetEnvironmentVariableW
