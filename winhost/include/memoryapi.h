// Views of files. Simplifies: no named mappings, no growth of the file, protections PAGE_READONLY, PAGE_READWRITE and
// PAGE_WRITECOPY.
#pragma once

#include <windef.h>
#include <minwinbase.h>

#define PAGE_READONLY 0x02
#define PAGE_READWRITE 0x04
#define PAGE_WRITECOPY 0x08
#define SECTION_QUERY 0x0001
#define SECTION_MAP_WRITE 0x0002
#define SECTION_MAP_READ 0x0004
#define FILE_MAP_COPY 0x0001
#define FILE_MAP_WRITE SECTION_MAP_WRITE
#define FILE_MAP_READ SECTION_MAP_READ

HANDLE WINAPI CreateFileMappingW(HANDLE file, LPSECURITY_ATTRIBUTES security, DWORD protection, DWORD size_high,
                                 DWORD size_low, LPCWSTR name);
LPVOID WINAPI MapViewOfFile(HANDLE mapping, DWORD access, DWORD offset_high, DWORD offset_low, SIZE_T bytes);
BOOL WINAPI UnmapViewOfFile(LPCVOID view);
