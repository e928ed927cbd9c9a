// Files and directories: opening, reading, writing, attributes, times, listing, volumes and free space.
//
// Promises Windows' own rules and error numbers: dispositions, sharing between all processes of the machine, deletion
// when the last handle closes, read-only/hidden/system protection, names compared without case, "/" taken for "\", "."
// and ".." resolved, trailing dots and blanks dropped, MAX_PATH (lifted by "\\?\"), device names.
// Simplifies: no alternate streams (":" in a name is ERROR_INVALID_NAME), no short names, no security descriptors, no
// overlapped completion (an OVERLAPPED gives the offset only), a name may have 255 UTF-8 bytes, drive Z: is the Linux
// root and read only.
// To make it fail: plan a fault for the function's name with the path as its subject (handle functions: the path the
// handle was opened with); bound a drive's free bytes; make a drive read only; name folders in "denied"; set the
// read-only attribute; hold a file open without sharing.
#pragma once

#include <windef.h>
#include <minwinbase.h>

#define CREATE_NEW 1
#define CREATE_ALWAYS 2
#define OPEN_EXISTING 3
#define OPEN_ALWAYS 4
#define TRUNCATE_EXISTING 5

#define INVALID_FILE_SIZE ((DWORD)0xffffffff)
#define INVALID_SET_FILE_POINTER ((DWORD)-1)
#define INVALID_FILE_ATTRIBUTES ((DWORD)-1)

HANDLE WINAPI CreateFileW(LPCWSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security, DWORD disposition,
                          DWORD flags_and_attributes, HANDLE model);
BOOL WINAPI ReadFile(HANDLE file, LPVOID buffer, DWORD bytes, LPDWORD read, LPOVERLAPPED overlapped);
BOOL WINAPI WriteFile(HANDLE file, LPCVOID buffer, DWORD bytes, LPDWORD written, LPOVERLAPPED overlapped);
DWORD WINAPI SetFilePointer(HANDLE file, LONG distance, PLONG distance_high, DWORD method);
BOOL WINAPI SetFilePointerEx(HANDLE file, LARGE_INTEGER distance, PLARGE_INTEGER position, DWORD method);
BOOL WINAPI SetEndOfFile(HANDLE file);
BOOL WINAPI FlushFileBuffers(HANDLE file);
DWORD WINAPI GetFileSize(HANDLE file, LPDWORD size_high);
BOOL WINAPI GetFileSizeEx(HANDLE file, PLARGE_INTEGER size);
DWORD WINAPI GetFileType(HANDLE file);
BOOL WINAPI GetFileTime(HANDLE file, LPFILETIME creation, LPFILETIME access, LPFILETIME modification);
BOOL WINAPI SetFileTime(HANDLE file, const FILETIME* creation, const FILETIME* access, const FILETIME* modification);

struct BY_HANDLE_FILE_INFORMATION {
  DWORD dwFileAttributes;
  FILETIME ftCreationTime;
  FILETIME ftLastAccessTime;
  FILETIME ftLastWriteTime;
  DWORD dwVolumeSerialNumber;
  DWORD nFileSizeHigh;
  DWORD nFileSizeLow;
  DWORD nNumberOfLinks;
  DWORD nFileIndexHigh;
  DWORD nFileIndexLow;
};
using LPBY_HANDLE_FILE_INFORMATION = BY_HANDLE_FILE_INFORMATION*;
BOOL WINAPI GetFileInformationByHandle(HANDLE file, LPBY_HANDLE_FILE_INFORMATION information);
// Only FILE_NAME_NORMALIZED | VOLUME_NAME_DOS: "\\?\C:\…".
DWORD WINAPI GetFinalPathNameByHandleW(HANDLE file, LPWSTR path, DWORD length, DWORD flags);

BOOL WINAPI DeleteFileW(LPCWSTR path);
BOOL WINAPI CreateDirectoryW(LPCWSTR path, LPSECURITY_ATTRIBUTES security);
BOOL WINAPI RemoveDirectoryW(LPCWSTR path);
DWORD WINAPI GetFileAttributesW(LPCWSTR path);
BOOL WINAPI SetFileAttributesW(LPCWSTR path, DWORD attributes);

struct WIN32_FILE_ATTRIBUTE_DATA {
  DWORD dwFileAttributes;
  FILETIME ftCreationTime;
  FILETIME ftLastAccessTime;
  FILETIME ftLastWriteTime;
  DWORD nFileSizeHigh;
  DWORD nFileSizeLow;
};
using LPWIN32_FILE_ATTRIBUTE_DATA = WIN32_FILE_ATTRIBUTE_DATA*;
BOOL WINAPI GetFileAttributesExW(LPCWSTR path, GET_FILEEX_INFO_LEVELS level, LPVOID information);

HANDLE WINAPI FindFirstFileW(LPCWSTR pattern, LPWIN32_FIND_DATAW data);
BOOL WINAPI FindNextFileW(HANDLE find, LPWIN32_FIND_DATAW data);
BOOL WINAPI FindClose(HANDLE find);

DWORD WINAPI GetFullPathNameW(LPCWSTR path, DWORD length, LPWSTR buffer, LPWSTR* file_part);
DWORD WINAPI GetLongPathNameW(LPCWSTR path, LPWSTR buffer, DWORD length);
DWORD WINAPI GetTempPathW(DWORD length, LPWSTR buffer);
UINT WINAPI GetTempFileNameW(LPCWSTR folder, LPCWSTR prefix, UINT unique, LPWSTR name);

BOOL WINAPI GetDiskFreeSpaceExW(LPCWSTR folder, PULARGE_INTEGER available, PULARGE_INTEGER total, PULARGE_INTEGER free);
BOOL WINAPI GetVolumeInformationW(LPCWSTR root, LPWSTR name, DWORD name_length, LPDWORD serial,
                                  LPDWORD component_length, LPDWORD flags, LPWSTR file_system,
                                  DWORD file_system_length);
UINT WINAPI GetDriveTypeW(LPCWSTR root);
DWORD WINAPI GetLogicalDrives();

LONG WINAPI CompareFileTime(const FILETIME* a, const FILETIME* b);
BOOL WINAPI FileTimeToLocalFileTime(const FILETIME* utc, LPFILETIME local);
BOOL WINAPI LocalFileTimeToFileTime(const FILETIME* local, LPFILETIME utc);

#define CreateFile CreateFileW
#define DeleteFile DeleteFileW
#define CreateDirectory CreateDirectoryW
#define RemoveDirectory RemoveDirectoryW
#define GetFileAttributes GetFileAttributesW
#define SetFileAttributes SetFileAttributesW
#define GetFileAttributesEx GetFileAttributesExW
#define FindFirstFile FindFirstFileW
#define FindNextFile FindNextFileW
