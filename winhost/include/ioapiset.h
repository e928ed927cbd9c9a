// Control codes to devices ("\\.\PhysicalDrive0"). Which devices there are, winhost/kernel/devices.h says; a file's
// handle answers ERROR_INVALID_FUNCTION.
#pragma once

#include <windef.h>
#include <minwinbase.h>

BOOL WINAPI DeviceIoControl(HANDLE device, DWORD code, LPVOID in, DWORD in_bytes, LPVOID out, DWORD out_bytes,
                            LPDWORD returned, LPOVERLAPPED overlapped);
