// Handles. A closed or unknown handle is refused with ERROR_INVALID_HANDLE; handle values are not reused.
#pragma once

#include <windef.h>

#define INVALID_HANDLE_VALUE (reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(-1)))

BOOL WINAPI CloseHandle(HANDLE handle);
DWORD WINAPI GetLastError();
void WINAPI SetLastError(DWORD error);
