// The little of tokens and SIDs by which a program finds out whether it runs elevated.
//
// Promises: the token of this process tells the machine's fact "elevated"; membership in the built-in administrators
// group follows it (a filtered token holds the group for denial only). Simplifies: no other token information and no
// other groups but Everyone and the built-in users. To fail: the fault plan, by function name.
#pragma once

#include <windef.h>

using PSID = PVOID;

struct SID_IDENTIFIER_AUTHORITY {
  BYTE Value[6];
};
using PSID_IDENTIFIER_AUTHORITY = SID_IDENTIFIER_AUTHORITY*;
#define SECURITY_NT_AUTHORITY \
  { 0, 0, 0, 0, 0, 5 }
#define SECURITY_WORLD_SID_AUTHORITY \
  { 0, 0, 0, 0, 0, 1 }
#define SECURITY_BUILTIN_DOMAIN_RID 0x00000020
#define DOMAIN_ALIAS_RID_ADMINS 0x00000220
#define DOMAIN_ALIAS_RID_USERS 0x00000221

#define TOKEN_QUERY (0x0008)

enum TOKEN_INFORMATION_CLASS { TokenElevationType = 18, TokenElevation = 20 };
enum TOKEN_ELEVATION_TYPE { TokenElevationTypeDefault = 1, TokenElevationTypeFull, TokenElevationTypeLimited };
struct TOKEN_ELEVATION {
  DWORD TokenIsElevated;
};

BOOL WINAPI OpenProcessToken(HANDLE process, DWORD access, PHANDLE token);
BOOL WINAPI GetTokenInformation(HANDLE token, TOKEN_INFORMATION_CLASS kind, LPVOID data, DWORD bytes, PDWORD needed);
BOOL APIENTRY CheckTokenMembership(HANDLE token, PSID sid, PBOOL member);
BOOL WINAPI AllocateAndInitializeSid(PSID_IDENTIFIER_AUTHORITY authority, BYTE count, DWORD sub0, DWORD sub1,
                                     DWORD sub2, DWORD sub3, DWORD sub4, DWORD sub5, DWORD sub6, DWORD sub7, PSID* sid);
PVOID WINAPI FreeSid(PSID sid);
