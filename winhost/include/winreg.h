// The registry: <machine>/registry.db, shared by every process of the machine, each call a transaction of its own.
//
// Promises: 32- and 64-bit views with the redirected and shared keys of the machine's Windows version; names compared
// without regard to case and kept as written; types and stored byte lengths kept exactly; the access mask of a key and
// elevation enforced; ERROR_KEY_DELETED for keys that are gone. Sub-keys are enumerated by name, values in creation
// order. Simplifies: HKEY_CLASSES_ROOT is HKLM\SOFTWARE\Classes alone; HKEY_USERS holds nothing of HKEY_CURRENT_USER;
// security descriptors, classes, links, notification and volatile keys are not kept; a text whose byte count leaves out
// its terminator is stored without it, also where the memory behind it happens to be zero (Windows adds it then).
// To fail: the fault plan, by function name; the subject is "HKLM\Software\…" or, for a value, that and "\value".
// The machine's fact "elevated": false refuses writes to HKLM (and HKCR) with ERROR_ACCESS_DENIED.
#pragma once

#include <minwinbase.h>
#include <winnt.h>

using LSTATUS = LONG;

#define HKEY_CLASSES_ROOT (reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(static_cast<LONG>(0x80000000))))
#define HKEY_CURRENT_USER (reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(static_cast<LONG>(0x80000001))))
#define HKEY_LOCAL_MACHINE (reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(static_cast<LONG>(0x80000002))))
#define HKEY_USERS (reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(static_cast<LONG>(0x80000003))))

#define KEY_QUERY_VALUE (0x0001)
#define KEY_SET_VALUE (0x0002)
#define KEY_CREATE_SUB_KEY (0x0004)
#define KEY_ENUMERATE_SUB_KEYS (0x0008)
#define KEY_NOTIFY (0x0010)
#define KEY_CREATE_LINK (0x0020)
#define KEY_WOW64_64KEY (0x0100)
#define KEY_WOW64_32KEY (0x0200)
#define KEY_WOW64_RES (0x0300)
#define KEY_READ ((STANDARD_RIGHTS_READ | KEY_QUERY_VALUE | KEY_ENUMERATE_SUB_KEYS | KEY_NOTIFY) & (~SYNCHRONIZE))
#define KEY_WRITE ((STANDARD_RIGHTS_WRITE | KEY_SET_VALUE | KEY_CREATE_SUB_KEY) & (~SYNCHRONIZE))
#define KEY_EXECUTE ((KEY_READ) & (~SYNCHRONIZE))
#define KEY_ALL_ACCESS                                                                                                 \
  ((STANDARD_RIGHTS_ALL | KEY_QUERY_VALUE | KEY_SET_VALUE | KEY_CREATE_SUB_KEY | KEY_ENUMERATE_SUB_KEYS | KEY_NOTIFY | \
    KEY_CREATE_LINK) &                                                                                                 \
   (~SYNCHRONIZE))

#define REG_OPTION_NON_VOLATILE 0x00000000
#define REG_OPTION_VOLATILE 0x00000001
#define REG_CREATED_NEW_KEY 0x00000001
#define REG_OPENED_EXISTING_KEY 0x00000002

LSTATUS WINAPI RegOpenKeyExW(HKEY key, LPCWSTR sub_key, DWORD options, REGSAM access, PHKEY result);
LSTATUS WINAPI RegCreateKeyExW(HKEY key, LPCWSTR sub_key, DWORD reserved, LPWSTR class_name, DWORD options,
                               REGSAM access, const LPSECURITY_ATTRIBUTES security, PHKEY result, LPDWORD disposition);
LSTATUS WINAPI RegCloseKey(HKEY key);
LSTATUS WINAPI RegQueryValueExW(HKEY key, LPCWSTR value, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD bytes);
LSTATUS WINAPI RegSetValueExW(HKEY key, LPCWSTR value, DWORD reserved, DWORD type, const BYTE* data, DWORD bytes);
// The same in bytes of the ANSI code page; only texts (REG_SZ, REG_EXPAND_SZ) are converted. Faults: as the wide calls.
LSTATUS WINAPI RegQueryValueExA(HKEY key, LPCSTR value, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD bytes);
LSTATUS WINAPI RegSetValueExA(HKEY key, LPCSTR value, DWORD reserved, DWORD type, const BYTE* data, DWORD bytes);
LSTATUS WINAPI RegDeleteValueW(HKEY key, LPCWSTR value);
LSTATUS WINAPI RegDeleteKeyW(HKEY key, LPCWSTR sub_key);
LSTATUS WINAPI RegDeleteKeyExW(HKEY key, LPCWSTR sub_key, REGSAM view, DWORD reserved);
LSTATUS WINAPI RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, LPDWORD name_chars, LPDWORD reserved,
                             LPWSTR class_name, LPDWORD class_chars, PFILETIME last_write);
LSTATUS WINAPI RegEnumValueW(HKEY key, DWORD index, LPWSTR name, LPDWORD name_chars, LPDWORD reserved, LPDWORD type,
                             LPBYTE data, LPDWORD bytes);
LSTATUS WINAPI RegQueryInfoKeyW(HKEY key, LPWSTR class_name, LPDWORD class_chars, LPDWORD reserved, LPDWORD sub_keys,
                                LPDWORD longest_sub_key, LPDWORD longest_class, LPDWORD values, LPDWORD longest_value,
                                LPDWORD most_bytes, LPDWORD security_bytes, PFILETIME last_write);
LSTATUS WINAPI RegFlushKey(HKEY key);
