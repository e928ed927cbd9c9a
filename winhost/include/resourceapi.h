// Resources of modules. The program's own resources (module null, or the handle of the program itself) and those of
// loaded libraries are read from the module's file, which is mapped, never copied: a PE file, or a Linux program with a
// resource image behind it. Pointers stay valid until the process ends.
//
// Names: numbers (MAKEINTRESOURCEW), "#205", or text compared without regard to case. Without a language the neutral
// one is taken, then American English, then the first. Errors: ERROR_RESOURCE_DATA_NOT_FOUND (a module without
// resources), ERROR_RESOURCE_TYPE_NOT_FOUND, _NAME_NOT_FOUND, _LANG_NOT_FOUND; an HRSRC that FindResource did not give
// is refused with ERROR_INVALID_HANDLE. Planned faults: "FindResourceW" (subject "TYPE/NAME", as "#10/#205"),
// "LoadResource", "SizeofResource".
#pragma once

#include <windef.h>

HRSRC WINAPI FindResourceW(HMODULE module, LPCWSTR name, LPCWSTR type);
HRSRC WINAPI FindResourceExW(HMODULE module, LPCWSTR type, LPCWSTR name, WORD language);
HGLOBAL WINAPI LoadResource(HMODULE module, HRSRC resource);
LPVOID WINAPI LockResource(HGLOBAL data);
DWORD WINAPI SizeofResource(HMODULE module, HRSRC resource);
