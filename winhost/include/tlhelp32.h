// Process snapshots.
//
// Promises: the machine's running programs with their real ids, the facts' "running" ones with ids of their own above
// 0x40000000, and the system's two that every Windows lists (0 "[System Process]", 4 "System").
// Simplifies: processes only; thread counts and priorities are plausible constants.
// To fail: the fault plan: "CreateToolhelp32Snapshot", "Process32FirstW", "Process32NextW".
#pragma once

#include <minwindef.h>

#define TH32CS_SNAPPROCESS 0x00000002

struct PROCESSENTRY32W {
  DWORD dwSize;
  DWORD cntUsage;
  DWORD th32ProcessID;
  ULONG_PTR th32DefaultHeapID;
  DWORD th32ModuleID;
  DWORD cntThreads;
  DWORD th32ParentProcessID;
  LONG pcPriClassBase;
  DWORD dwFlags;
  WCHAR szExeFile[MAX_PATH];
};
using PPROCESSENTRY32W = PROCESSENTRY32W*;
using LPPROCESSENTRY32W = PROCESSENTRY32W*;

// INVALID_HANDLE_VALUE on failure.
HANDLE WINAPI CreateToolhelp32Snapshot(DWORD flags, DWORD process_id);
// dwSize must be set; too small a size is ERROR_BAD_LENGTH. The end is ERROR_NO_MORE_FILES.
BOOL WINAPI Process32FirstW(HANDLE snapshot, LPPROCESSENTRY32W entry);
BOOL WINAPI Process32NextW(HANDLE snapshot, LPPROCESSENTRY32W entry);
