// The performance counter (10 MHz, of the machine's clock) and INI files.
//
// INI files: UTF-16LE with a byte-order mark, UTF-8 with or without one; bytes that are no UTF-8 are taken as
// Windows-1252. Written back in the form in which they were read; new files are 8-bit, as Windows makes them. A name
// without a folder means the Windows folder. To make it fail: faults for the functions' names, subject the file.
#pragma once

#include <windef.h>

BOOL WINAPI QueryPerformanceCounter(LARGE_INTEGER* count);
BOOL WINAPI QueryPerformanceFrequency(LARGE_INTEGER* frequency);

// Characters copied, without the terminator; length - 1 (lists: length - 2) when it did not fit. No section: the list
// of sections; no key: the list of the section's keys; each name terminated, the list by an empty one.
DWORD WINAPI GetPrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR fallback, LPWSTR buffer, DWORD length,
                                      LPCWSTR file);
UINT WINAPI GetPrivateProfileIntW(LPCWSTR section, LPCWSTR key, INT fallback, LPCWSTR file);
// No value: the key is removed; no key: the section.
BOOL WINAPI WritePrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR value, LPCWSTR file);

#define GetPrivateProfileString GetPrivateProfileStringW
#define GetPrivateProfileInt GetPrivateProfileIntW
#define WritePrivateProfileString WritePrivateProfileStringW
