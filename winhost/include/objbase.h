// COM: apartments, making objects, task memory.
//
// Promises: a thread's apartment is counted as Windows counts it (S_FALSE for a second initialisation,
// RPC_E_CHANGED_MODE for another model); a thread without one may still make objects while the process has a
// multithreaded apartment, and gets CO_E_NOTINITIALIZED otherwise. Classes: the shell link, the shell's windows, both
// task schedulers, the file dialog (in programs that draw).
// Simplifies: objects are called directly from any thread, without marshalling; no class is loaded from a library.
// To fail: the fact "missing_classes" (names such as "CLSID_ShellLink") makes a class unregistered; the fault plan:
// "CoInitializeEx", "OleInitialize", "CoCreateInstance" (subject: the class's name) and every method as
// "ITaskService::Connect". The errors of all of these are HRESULTs.
#pragma once

#include <objidl.h>

enum COINIT {
  COINIT_MULTITHREADED = 0x0,
  COINIT_APARTMENTTHREADED = 0x2,
  COINIT_DISABLE_OLE1DDE = 0x4,
  COINIT_SPEED_OVER_MEMORY = 0x8,
};

HRESULT WINAPI CoInitialize(LPVOID reserved);
HRESULT WINAPI CoInitializeEx(LPVOID reserved, DWORD model);
void WINAPI CoUninitialize();
HRESULT WINAPI CoCreateInstance(REFCLSID class_id, IUnknown* outer, DWORD context, REFIID iid, LPVOID* object);

LPVOID WINAPI CoTaskMemAlloc(SIZE_T bytes);
LPVOID WINAPI CoTaskMemRealloc(LPVOID memory, SIZE_T bytes);
void WINAPI CoTaskMemFree(LPVOID memory);

// A stream over a movable block, or over a new one when it is null. `release`: the last Release frees the block.
HRESULT WINAPI CreateStreamOnHGlobal(HGLOBAL memory, BOOL release, LPSTREAM* stream);
HRESULT WINAPI GetHGlobalFromStream(LPSTREAM stream, HGLOBAL* memory);

HRESULT WINAPI CoCreateGuid(GUID* guid);
// "{8-4-4-4-12}"; answers the characters written with terminator, 0 where they do not fit.
int WINAPI StringFromGUID2(REFGUID guid, LPOLESTR text, int capacity);
