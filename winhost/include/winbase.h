// The kernel's calls, by area.
#pragma once

#include <corecrt_wstdlib.h>
#include <debugapi.h>
#include <fileapi.h>
#include <handleapi.h>
#include <heapapi.h>
#include <interlockedapi.h>
#include <ioapiset.h>
#include <libloaderapi.h>
#include <memoryapi.h>
#include <minwinbase.h>
#include <processenv.h>
#include <processthreadsapi.h>
#include <profileapi.h>
#include <securitybaseapi.h>
#include <stringapiset.h>
#include <synchapi.h>
#include <sysinfoapi.h>
#include <timezoneapi.h>
#include <wow64apiset.h>

// `chars` counts the terminator in and out. Too small a buffer: FALSE, the size needed, ERROR_INSUFFICIENT_BUFFER for
// the user's name and ERROR_BUFFER_OVERFLOW for the computer's. To fail: the fault plan, by function name.
BOOL WINAPI GetUserNameW(LPWSTR buffer, LPDWORD chars);
BOOL WINAPI GetComputerNameW(LPWSTR buffer, LPDWORD chars);

// Every program of the machine defines it; winhost_main calls it.
int WINAPI wWinMain(HINSTANCE instance, HINSTANCE previous, LPWSTR command_line, int show);

#define FILE_BEGIN 0
#define FILE_CURRENT 1
#define FILE_END 2
#define FILE_FLAG_WRITE_THROUGH 0x80000000
#define FILE_FLAG_OVERLAPPED 0x40000000
#define FILE_FLAG_RANDOM_ACCESS 0x10000000
#define FILE_FLAG_SEQUENTIAL_SCAN 0x8000000
#define FILE_FLAG_DELETE_ON_CLOSE 0x4000000
#define FILE_FLAG_BACKUP_SEMANTICS 0x2000000
#define FILE_FLAG_OPEN_REPARSE_POINT 0x200000
#define FILE_TYPE_UNKNOWN 0x0
#define FILE_TYPE_DISK 0x1
#define FILE_TYPE_CHAR 0x2

#define MOVEFILE_REPLACE_EXISTING 0x00000001
#define MOVEFILE_COPY_ALLOWED 0x00000002
#define MOVEFILE_DELAY_UNTIL_REBOOT 0x00000004
#define MOVEFILE_WRITE_THROUGH 0x00000008
// With MOVEFILE_DELAY_UNTIL_REBOOT nothing moves: the wish is journalled as "deferred" {from, to} (`to` null: delete).
BOOL WINAPI MoveFileExW(LPCWSTR from, LPCWSTR to, DWORD flags);
BOOL WINAPI MoveFileW(LPCWSTR from, LPCWSTR to);
BOOL WINAPI CopyFileW(LPCWSTR from, LPCWSTR to, BOOL fail_if_exists);

#define DRIVE_UNKNOWN 0
#define DRIVE_NO_ROOT_DIR 1
#define DRIVE_REMOVABLE 2
#define DRIVE_FIXED 3
#define DRIVE_REMOTE 4
#define DRIVE_CDROM 5
#define DRIVE_RAMDISK 6

BOOL WINAPI DosDateTimeToFileTime(WORD date, WORD time, LPFILETIME file_time);
BOOL WINAPI FileTimeToDosDateTime(const FILETIME* file_time, LPWORD date, LPWORD time);

// number * numerator / denominator in 64 bits, rounded half away from zero; -1 when it does not fit or divides by 0.
int WINAPI MulDiv(int number, int numerator, int denominator);
