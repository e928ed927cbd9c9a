// Whether a 32-bit process runs on 64-bit Windows, by the facts "process_bits" and "windows_bits".
#pragma once

#include <minwindef.h>

BOOL WINAPI IsWow64Process(HANDLE process, PBOOL wow64);
