// Modules: loading, exports, module paths.
//
// Promises: the system's own libraries (kernel32.dll …) are there by name, with exactly the run-time exports that the
// machine's Windows version has; libraries in files are Linux shared objects, plain or carried inside a PE file, really
// loaded, their DllMain called when they export one. A loaded library's file cannot be deleted or written, but renamed.
// Search order: modules loaded already, known system libraries, then the application's folder, the system folders, the
// current folder; the LOAD_LIBRARY_SEARCH flags and SetDefaultDllDirectories narrow it where the Windows version has
// them (Windows 7 on; before, they are ERROR_INVALID_PARAMETER). Simplifies: a library's dependencies are Linux's
// business; the bitness of a PE file is not compared with the process's. AddDllDirectory and SetDefaultDllDirectories
// are found by GetProcAddress only. To fail: the fault plan: "LoadLibraryW", "LoadLibraryExW" (subject: the name
// given), "GetProcAddress" (the export), "GetModuleFileNameW"; the facts "missing_exports".
#pragma once

#include <minwindef.h>
#include <resourceapi.h>

// Marks a library's exports: extern "C" __declspec(dllexport).
#define __declspec(kind) WINHOST_DECLSPEC_##kind
#define WINHOST_DECLSPEC_dllexport __attribute__((visibility("default"), used))
#define WINHOST_DECLSPEC_noreturn __attribute__((noreturn))

#define DONT_RESOLVE_DLL_REFERENCES 0x1
#define LOAD_LIBRARY_AS_DATAFILE 0x2
#define LOAD_WITH_ALTERED_SEARCH_PATH 0x8
#define LOAD_LIBRARY_AS_IMAGE_RESOURCE 0x20
#define LOAD_LIBRARY_AS_DATAFILE_EXCLUSIVE 0x40
#define LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR 0x100
#define LOAD_LIBRARY_SEARCH_APPLICATION_DIR 0x200
#define LOAD_LIBRARY_SEARCH_USER_DIRS 0x400
#define LOAD_LIBRARY_SEARCH_SYSTEM32 0x800
#define LOAD_LIBRARY_SEARCH_DEFAULT_DIRS 0x1000

#define DLL_PROCESS_DETACH 0
#define DLL_PROCESS_ATTACH 1

using DLL_DIRECTORY_COOKIE = PVOID;

// Counted: each success asks for one FreeLibrary. Names without an extension get ".dll"; a trailing dot keeps it away.
HMODULE WINAPI LoadLibraryW(LPCWSTR name);
HMODULE WINAPI LoadLibraryExW(LPCWSTR name, HANDLE reserved, DWORD flags);
BOOL WINAPI FreeLibrary(HMODULE module);
// Not counted. Null: the program itself.
HMODULE WINAPI GetModuleHandleW(LPCWSTR name);
FARPROC WINAPI GetProcAddress(HMODULE module, LPCSTR name);
// Characters without the terminator. Too small a buffer is filled: with a terminator and ERROR_INSUFFICIENT_BUFFER from
// Vista on, without either on Windows XP; the result is then `chars`.
DWORD WINAPI GetModuleFileNameW(HMODULE module, LPWSTR path, DWORD chars);
