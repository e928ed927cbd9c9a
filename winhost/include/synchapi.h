// Waits, events, critical sections, Sleep.
//
// Promises: time-outs and Sleep follow the machine's clock; on a standing clock a wait that times out moves it on.
// Waits are fair to nobody, as on Windows. Critical sections are recursive.
// Simplifies: event names are refused (ERROR_NOT_SUPPORTED): no event crosses processes. No alertable waits.
// To fail: the fault plan: "CreateEventW".
#pragma once

#include <minwinbase.h>

#define INFINITE 0xffffffffU
#define WAIT_FAILED ((DWORD)0xffffffff)
#define WAIT_OBJECT_0 ((DWORD)0)
#define MAXIMUM_WAIT_OBJECTS 64

// Opaque; lives where its owner put it and must not be moved while initialised.
struct CRITICAL_SECTION {
  alignas(16) BYTE mutex[64];
};
using PCRITICAL_SECTION = CRITICAL_SECTION*;
using LPCRITICAL_SECTION = CRITICAL_SECTION*;

void WINAPI InitializeCriticalSection(LPCRITICAL_SECTION section);
BOOL WINAPI InitializeCriticalSectionAndSpinCount(LPCRITICAL_SECTION section, DWORD spins);
void WINAPI EnterCriticalSection(LPCRITICAL_SECTION section);
BOOL WINAPI TryEnterCriticalSection(LPCRITICAL_SECTION section);
void WINAPI LeaveCriticalSection(LPCRITICAL_SECTION section);
void WINAPI DeleteCriticalSection(LPCRITICAL_SECTION section);

HANDLE WINAPI CreateEventW(LPSECURITY_ATTRIBUTES attributes, BOOL manual_reset, BOOL initially_set, LPCWSTR name);
BOOL WINAPI SetEvent(HANDLE event);
BOOL WINAPI ResetEvent(HANDLE event);

// Milliseconds of the machine. Events, threads and processes can be waited for; other handles give WAIT_FAILED.
DWORD WINAPI WaitForSingleObject(HANDLE handle, DWORD milliseconds);
DWORD WINAPI WaitForMultipleObjects(DWORD count, const HANDLE* handles, BOOL all, DWORD milliseconds);

void WINAPI Sleep(DWORD milliseconds);
