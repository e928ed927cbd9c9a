// Conversion between UTF-16 and bytes, and the lstr family.
//
// Code pages: CP_UTF8 with its flags; CP_ACP and CP_OEMCP are UTF-8 too (a Windows with UTF-8 as its system code page);
// 1252 and 20127 by table; every other one is ERROR_INVALID_PARAMETER.
#pragma once

#include <windef.h>

#define CP_ACP 0
#define CP_OEMCP 1
#define CP_THREAD_ACP 3
#define CP_UTF8 65001
#define MB_PRECOMPOSED 0x00000001
#define MB_ERR_INVALID_CHARS 0x00000008
#define WC_ERR_INVALID_CHARS 0x00000080
#define WC_NO_BEST_FIT_CHARS 0x00000400

int WINAPI MultiByteToWideChar(UINT code_page, DWORD flags, LPCSTR bytes, int byte_count, LPWSTR text, int text_length);
int WINAPI WideCharToMultiByte(UINT code_page, DWORD flags, LPCWSTR text, int text_length, LPSTR bytes, int byte_count,
                               LPCSTR default_char, LPBOOL used_default);

// What CompareStringW answers.
#define CSTR_LESS_THAN 1
#define CSTR_EQUAL 2
#define CSTR_GREATER_THAN 3

int WINAPI lstrlenW(LPCWSTR text);
int WINAPI lstrlenA(LPCSTR text);
// These two compare as word sort does in the respects that show here: letters before case, capitals after small ones.
int WINAPI lstrcmpW(LPCWSTR a, LPCWSTR b);
int WINAPI lstrcmpiW(LPCWSTR a, LPCWSTR b);
LPWSTR WINAPI lstrcpyW(LPWSTR to, LPCWSTR from);
// Copies at most length - 1 characters and terminates.
LPWSTR WINAPI lstrcpynW(LPWSTR to, LPCWSTR from, int length);
LPWSTR WINAPI lstrcatW(LPWSTR to, LPCWSTR from);

#define lstrlen lstrlenW
#define lstrcmp lstrcmpW
#define lstrcmpi lstrcmpiW
#define lstrcpy lstrcpyW
#define lstrcpyn lstrcpynW
#define lstrcat lstrcatW
