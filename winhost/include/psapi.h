// The path of another process's program. Needs PROCESS_QUERY_INFORMATION and PROCESS_VM_READ. `module` must be null.
// To fail: the fault plan, "GetModuleFileNameExW" (subject: the image's Windows path).
#pragma once

#include <minwindef.h>

// Characters without the terminator; too small a buffer is filled and terminated. 0 on failure.
DWORD WINAPI GetModuleFileNameExW(HANDLE process, HMODULE module, LPWSTR path, DWORD chars);
