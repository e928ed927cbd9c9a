// Path arithmetic, string searches and the registry's short forms.
//
// Promises: the system's own answers, odd sides included: "/" is an ordinary character (PathFindFileNameW and
// PathStripPathW alone know it); results are bounded by MAX_PATH (260 with terminator); a path that does not fit makes
// the call fail and its output empty; a common prefix of two characters is answered as three. PathFileExistsW and
// PathIsDirectoryW ask the file system of the machine and set the last error when they say no. Simplifies: StrCmp…
// order by code unit after the system's upper-casing, not by language. To fail: the fault plan,
// "PathFileExistsW"/"PathIsDirectoryW" (subject: the path), "SHGetValueW", "SHSetValueW", "SHDeleteValueW",
// "SHDeleteKeyW" (subject: as in <winreg.h>); these also obey the plans of the Reg… calls that they make.
#pragma once

#include <winerror.h>
#include <winreg.h>

struct IUnknown;

LPWSTR WINAPI PathAddBackslashW(LPWSTR path);
BOOL WINAPI PathAddExtensionW(LPWSTR path, LPCWSTR extension);
BOOL WINAPI PathAppendW(LPWSTR path, LPCWSTR more);
BOOL WINAPI PathCanonicalizeW(LPWSTR result, LPCWSTR path);
LPWSTR WINAPI PathCombineW(LPWSTR result, LPCWSTR folder, LPCWSTR file);
int WINAPI PathCommonPrefixW(LPCWSTR a, LPCWSTR b, LPWSTR prefix);
BOOL WINAPI PathFileExistsW(LPCWSTR path);
LPWSTR WINAPI PathFindExtensionW(LPCWSTR path);
LPWSTR WINAPI PathFindFileNameW(LPCWSTR path);
LPWSTR WINAPI PathFindNextComponentW(LPCWSTR path);
int WINAPI PathGetDriveNumberW(LPCWSTR path);
BOOL WINAPI PathIsDirectoryW(LPCWSTR path);
BOOL WINAPI PathIsFileSpecW(LPCWSTR path);
BOOL WINAPI PathIsPrefixW(LPCWSTR prefix, LPCWSTR path);
BOOL WINAPI PathIsRelativeW(LPCWSTR path);
BOOL WINAPI PathIsRootW(LPCWSTR path);
BOOL WINAPI PathIsUNCW(LPCWSTR path);
BOOL WINAPI PathIsUNCServerW(LPCWSTR path);
BOOL WINAPI PathIsUNCServerShareW(LPCWSTR path);
void WINAPI PathQuoteSpacesW(LPWSTR path);
LPWSTR WINAPI PathRemoveBackslashW(LPWSTR path);
void WINAPI PathRemoveExtensionW(LPWSTR path);
BOOL WINAPI PathRemoveFileSpecW(LPWSTR path);
BOOL WINAPI PathRenameExtensionW(LPWSTR path, LPCWSTR extension);
LPWSTR WINAPI PathSkipRootW(LPCWSTR path);
void WINAPI PathStripPathW(LPWSTR path);
BOOL WINAPI PathStripToRootW(LPWSTR path);
void WINAPI PathUnquoteSpacesW(LPWSTR path);

LPWSTR WINAPI StrChrW(LPCWSTR text, WCHAR wanted);
LPWSTR WINAPI StrChrIW(LPCWSTR text, WCHAR wanted);
LPWSTR WINAPI StrRChrW(LPCWSTR text, LPCWSTR end, WCHAR wanted);
LPWSTR WINAPI StrStrW(LPCWSTR text, LPCWSTR wanted);
LPWSTR WINAPI StrStrIW(LPCWSTR text, LPCWSTR wanted);
int WINAPI StrCmpW(LPCWSTR a, LPCWSTR b);
int WINAPI StrCmpIW(LPCWSTR a, LPCWSTR b);
int WINAPI StrCmpNW(LPCWSTR a, LPCWSTR b, int chars);
int WINAPI StrCmpNIW(LPCWSTR a, LPCWSTR b, int chars);
LPWSTR WINAPI StrCpyNW(LPWSTR to, LPCWSTR from, int chars);
int WINAPI StrToIntW(LPCWSTR text);
BOOL WINAPI StrTrimW(LPWSTR text, LPCWSTR characters);

DWORD WINAPI SHGetValueW(HKEY key, LPCWSTR sub_key, LPCWSTR value, DWORD* type, void* data, DWORD* bytes);
DWORD WINAPI SHSetValueW(HKEY key, LPCWSTR sub_key, LPCWSTR value, DWORD type, LPCVOID data, DWORD bytes);
DWORD WINAPI SHDeleteValueW(HKEY key, LPCWSTR sub_key, LPCWSTR value);
DWORD WINAPI SHDeleteKeyW(HKEY key, LPCWSTR sub_key);
DWORD WINAPI SHQueryValueExW(HKEY key, LPCWSTR value, DWORD* reserved, DWORD* type, void* data, DWORD* bytes);

// Asks `object` for IServiceProvider and that for the service; E_FAIL without an object.
HRESULT WINAPI IUnknown_QueryService(IUnknown* object, REFGUID service, REFIID iid, void** result);
