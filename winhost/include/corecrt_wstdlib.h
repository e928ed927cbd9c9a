// The run-time's text functions for WCHAR, which is char16_t here and has none of its own. <windows.h> brings them, so
// that a file that includes <wchar.h> or <stdlib.h> as it must on Windows finds them; those headers themselves stay the
// system's, because the C++ library takes the addresses of their functions.
//
// Comparison without case maps letters one to one by the machine's table. LONG is 32 bits here as there, so the number
// readers saturate at 32 bits and set errno to ERANGE.
#pragma once

#include <cstdlib>
#include <cwchar>

#include <minwindef.h>

size_t wcslen(const WCHAR* text);
int wcscmp(const WCHAR* a, const WCHAR* b);
int wcsncmp(const WCHAR* a, const WCHAR* b, size_t count);
WCHAR* wcscpy(WCHAR* to, const WCHAR* from);
WCHAR* wcsncpy(WCHAR* to, const WCHAR* from, size_t count);
WCHAR* wcscat(WCHAR* to, const WCHAR* from);
const WCHAR* wcschr(const WCHAR* text, WCHAR c);
WCHAR* wcschr(WCHAR* text, WCHAR c);
const WCHAR* wcsrchr(const WCHAR* text, WCHAR c);
WCHAR* wcsrchr(WCHAR* text, WCHAR c);
const WCHAR* wcsstr(const WCHAR* text, const WCHAR* part);
WCHAR* wcsstr(WCHAR* text, const WCHAR* part);
int _wcsicmp(const WCHAR* a, const WCHAR* b);
int _wcsnicmp(const WCHAR* a, const WCHAR* b, size_t count);
LONG wcstol(const WCHAR* text, WCHAR** end, int base);
ULONG wcstoul(const WCHAR* text, WCHAR** end, int base);
int _wtoi(const WCHAR* text);
LONGLONG _wtoi64(const WCHAR* text);
