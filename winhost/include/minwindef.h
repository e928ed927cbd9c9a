// The scalar types of Win32 at their Windows sizes (LONG and DWORD are 32 bits although this is an LP64 system), the
// calling-convention words (empty here) and the small macros that everything else is written with.
#pragma once

#include <cstddef>
#include <cstdint>

#define WINAPI
#define CALLBACK
#define APIENTRY WINAPI
#define STDAPICALLTYPE
#define STDMETHODCALLTYPE
#define WINAPIV
#define __stdcall
#define __cdecl
#define CONST const
#define VOID void
#define IN
#define OUT
#define FAR
#define TRUE 1
#define FALSE 0
#define MAX_PATH 260
#define DECLSPEC_NORETURN [[noreturn]]

using BOOL = int;
using BYTE = unsigned char;
using BOOLEAN = BYTE;
using CHAR = char;
using UCHAR = unsigned char;
using SHORT = short;
using USHORT = unsigned short;
using WORD = unsigned short;
using INT = int;
using UINT = unsigned int;
using LONG = int;
using ULONG = unsigned int;
using DWORD = unsigned int;
using FLOAT = float;
using LONGLONG = long long;
using ULONGLONG = unsigned long long;
using DWORDLONG = ULONGLONG;
using DWORD64 = ULONGLONG;
using LONG64 = LONGLONG;
using INT32 = int;
using UINT32 = unsigned int;
using INT64 = LONGLONG;
using UINT64 = ULONGLONG;
using INT_PTR = std::intptr_t;
using UINT_PTR = std::uintptr_t;
using LONG_PTR = std::intptr_t;
using ULONG_PTR = std::uintptr_t;
using DWORD_PTR = ULONG_PTR;
using PDWORD_PTR = DWORD_PTR*;
using SIZE_T = ULONG_PTR;
using WCHAR = char16_t;
using ATOM = WORD;
using WPARAM = UINT_PTR;
using LPARAM = LONG_PTR;
using LRESULT = LONG_PTR;
using HRESULT = LONG;
using LCID = DWORD;
using LANGID = WORD;

using PVOID = void*;
using LPVOID = void*;
using LPCVOID = const void*;
using PBYTE = BYTE*;
using LPBYTE = BYTE*;
using PWORD = WORD*;
using LPWORD = WORD*;
using PDWORD = DWORD*;
using LPDWORD = DWORD*;
using PLONG = LONG*;
using LPLONG = LONG*;
using PULONG = ULONG*;
using PUINT = UINT*;
using LPBOOL = BOOL*;
using PBOOL = BOOL*;
using LPSTR = CHAR*;
using PSTR = CHAR*;
using LPCSTR = const CHAR*;
using PCSTR = const CHAR*;
using LPWSTR = WCHAR*;
using PWSTR = WCHAR*;
using PWCHAR = WCHAR*;
using LPCWSTR = const WCHAR*;
using PCWSTR = const WCHAR*;
using LPTSTR = LPWSTR;
using LPCTSTR = LPCWSTR;
using TCHAR = WCHAR;

// Two levels, so that TEXT(NAME) expands a macro first.
#define __TEXT(quote) u##quote
#define TEXT(quote) __TEXT(quote)

using HANDLE = void*;
using PHANDLE = HANDLE*;
using LPHANDLE = HANDLE*;
#define DECLARE_HANDLE(name) \
  struct name##__ {          \
    int unused;              \
  };                         \
  using name = name##__*
DECLARE_HANDLE(HINSTANCE);
using HMODULE = HINSTANCE;
DECLARE_HANDLE(HKEY);
using PHKEY = HKEY*;
DECLARE_HANDLE(HRSRC);
using HGLOBAL = HANDLE;
using HLOCAL = HANDLE;
DECLARE_HANDLE(HKL);
using FARPROC = INT_PTR (*)();
using PROC = FARPROC;

#define MAKEWORD(a, b) ((WORD)(((BYTE)((DWORD_PTR)(a)&0xff)) | ((WORD)((BYTE)((DWORD_PTR)(b)&0xff))) << 8))
#define MAKELONG(a, b) ((LONG)(((WORD)((DWORD_PTR)(a)&0xffff)) | ((DWORD)((WORD)((DWORD_PTR)(b)&0xffff))) << 16))
#define LOWORD(l) ((WORD)((DWORD_PTR)(l)&0xffff))
#define HIWORD(l) ((WORD)(((DWORD_PTR)(l) >> 16) & 0xffff))
#define LOBYTE(w) ((BYTE)((DWORD_PTR)(w)&0xff))
#define HIBYTE(w) ((BYTE)(((DWORD_PTR)(w) >> 8) & 0xff))

struct FILETIME {
  DWORD dwLowDateTime;
  DWORD dwHighDateTime;
};
using PFILETIME = FILETIME*;
using LPFILETIME = FILETIME*;
