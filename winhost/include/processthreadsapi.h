// Processes and threads.
//
// Promises: processes of the machine are Linux processes that the machine's process table names (this one too, on first
// use); ending one really ends it. Processes that the facts list as "running" exist in the table alone. Access rights
// are checked at each use of a handle. Threads are POSIX threads. Simplifies: exit codes are known of programs that
// winhost started or that were ended through it; another kind of Linux program ends with 0. No security attributes, no
// stack sizes below the system's, no priorities. On Windows before Vista PROCESS_QUERY_LIMITED_INFORMATION is refused
// with ERROR_ACCESS_DENIED, as there. To fail: the fault plan: "OpenProcess" and "TerminateProcess" (subject: the
// image's Windows path), "CreateThread".
#pragma once

#include <minwinbase.h>

#define PROCESS_TERMINATE (0x0001)
#define PROCESS_VM_READ (0x0010)
#define PROCESS_QUERY_INFORMATION (0x0400)
#define PROCESS_QUERY_LIMITED_INFORMATION (0x1000)
#define PROCESS_ALL_ACCESS (STANDARD_RIGHTS_REQUIRED | SYNCHRONIZE | 0xffff)
#define STILL_ACTIVE ((DWORD)0x00000103L)
#define CREATE_SUSPENDED 0x4
#define TLS_OUT_OF_INDEXES ((DWORD)0xFFFFFFFF)

using LPTHREAD_START_ROUTINE = DWORD(WINAPI*)(LPVOID);

// A pseudo-handle: needs no closing, has every right.
HANDLE WINAPI GetCurrentProcess();
DWORD WINAPI GetCurrentProcessId();
// Fails with ERROR_INVALID_PARAMETER for an id nobody has, ERROR_ACCESS_DENIED for the system's own processes.
HANDLE WINAPI OpenProcess(DWORD access, BOOL inherit, DWORD process_id);
DWORD WINAPI GetProcessId(HANDLE process);
// STILL_ACTIVE while it runs.
BOOL WINAPI GetExitCodeProcess(HANDLE process, LPDWORD code);
// The process is gone when the call returns (the system's own would let it linger).
BOOL WINAPI TerminateProcess(HANDLE process, UINT code);
DECLSPEC_NORETURN void WINAPI ExitProcess(UINT code);

// stack_bytes 0: the default. `thread_id` may be null. Null with the last error set on failure.
HANDLE WINAPI CreateThread(LPSECURITY_ATTRIBUTES attributes, SIZE_T stack_bytes, LPTHREAD_START_ROUTINE start,
                           LPVOID argument, DWORD flags, LPDWORD thread_id);
DECLSPEC_NORETURN void WINAPI ExitThread(DWORD code);
BOOL WINAPI GetExitCodeThread(HANDLE thread, LPDWORD code);
// The former suspend count; (DWORD)-1 on failure. Only threads made with CREATE_SUSPENDED are ever suspended.
DWORD WINAPI ResumeThread(HANDLE thread);
DWORD WINAPI GetCurrentThreadId();
BOOL WINAPI SwitchToThread();

DWORD WINAPI TlsAlloc();
BOOL WINAPI TlsFree(DWORD index);
// Null for a slot this thread never set; sets the last error to 0 on success, as the system does.
LPVOID WINAPI TlsGetValue(DWORD index);
BOOL WINAPI TlsSetValue(DWORD index, LPVOID value);
