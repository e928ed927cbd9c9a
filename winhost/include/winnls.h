// Locale values that the setup uses, and comparison by locale.
//
// Every locale compares alike: letters first, then (without NORM_IGNORECASE) small before capital.
#pragma once

#include <stringapiset.h>

#define LOCALE_USER_DEFAULT ((LCID)0x0400)
#define LOCALE_SYSTEM_DEFAULT ((LCID)0x0800)
#define LOCALE_INVARIANT ((LCID)0x007f)
#define NORM_IGNORECASE 0x00000001

UINT WINAPI GetACP();
LCID WINAPI GetUserDefaultLCID();
LANGID WINAPI GetUserDefaultLangID();
// 1 less, 2 equal, 3 greater, 0 failed. A count of -1 means a terminated text.
int WINAPI CompareStringW(LCID locale, DWORD flags, LPCWSTR a, int a_length, LPCWSTR b, int b_length);
