// Special folders, the making of directory chains, and the older folder picker.
//
// Promises: the folders of the machine's Windows version and bitness (documents and settings before Vista, users
// after), as this process sees them; the fact "folders" overrides one by its CSIDL name, "" making it impossible to
// find. CSIDL_FLAG_CREATE makes a missing folder; without it a missing folder answers E_FAIL and no path (with
// CSIDL_FLAG_DONT_VERIFY nothing is checked). SHBrowseForFolderW shows a real window, of class "#32770":
// winhost/dialogs/folder_dialog.h says how to use it, and how a program answers it.
// Simplifies: one user; the token and the "default" folder are not looked at; virtual folders answer E_INVALIDARG.
// The folder picker looks like the newer one (shobjidl.h), begins with the drives, and asks no callback; a root and
// flags other than the two below are refused: null, at once.
// To fail: the facts "folders", or the fault plan: "SHGetFolderPathW" (subject: the CSIDL name; the error an HRESULT),
// "SHCreateDirectory" (subject: the path; the error a system error number), "SHBrowseForFolderW" (instead of a dialog),
// "SHGetPathFromIDListW" (subject: the path).
#pragma once

#include <shobjidl.h>
#include <shlwapi.h>

#define CSIDL_DESKTOP 0x0000
#define CSIDL_INTERNET 0x0001
#define CSIDL_PROGRAMS 0x0002
#define CSIDL_CONTROLS 0x0003
#define CSIDL_PRINTERS 0x0004
#define CSIDL_PERSONAL 0x0005
#define CSIDL_MYDOCUMENTS CSIDL_PERSONAL
#define CSIDL_FAVORITES 0x0006
#define CSIDL_STARTUP 0x0007
#define CSIDL_RECENT 0x0008
#define CSIDL_SENDTO 0x0009
#define CSIDL_BITBUCKET 0x000a
#define CSIDL_STARTMENU 0x000b
#define CSIDL_MYMUSIC 0x000d
#define CSIDL_MYVIDEO 0x000e
#define CSIDL_DESKTOPDIRECTORY 0x0010
#define CSIDL_DRIVES 0x0011
#define CSIDL_NETWORK 0x0012
#define CSIDL_FONTS 0x0014
#define CSIDL_TEMPLATES 0x0015
#define CSIDL_COMMON_STARTMENU 0x0016
#define CSIDL_COMMON_PROGRAMS 0x0017
#define CSIDL_COMMON_STARTUP 0x0018
#define CSIDL_COMMON_DESKTOPDIRECTORY 0x0019
#define CSIDL_APPDATA 0x001a
#define CSIDL_LOCAL_APPDATA 0x001c
#define CSIDL_INTERNET_CACHE 0x0020
#define CSIDL_COOKIES 0x0021
#define CSIDL_HISTORY 0x0022
#define CSIDL_COMMON_APPDATA 0x0023
#define CSIDL_WINDOWS 0x0024
#define CSIDL_SYSTEM 0x0025
#define CSIDL_PROGRAM_FILES 0x0026
#define CSIDL_MYPICTURES 0x0027
#define CSIDL_PROFILE 0x0028
#define CSIDL_SYSTEMX86 0x0029
#define CSIDL_PROGRAM_FILESX86 0x002a
#define CSIDL_PROGRAM_FILES_COMMON 0x002b
#define CSIDL_PROGRAM_FILES_COMMONX86 0x002c
#define CSIDL_COMMON_DOCUMENTS 0x002e

#define CSIDL_FLAG_CREATE 0x8000
#define CSIDL_FLAG_DONT_VERIFY 0x4000
#define CSIDL_FLAG_NO_ALIAS 0x1000
#define CSIDL_FLAG_MASK 0xff00

enum SHGFP_TYPE { SHGFP_TYPE_CURRENT = 0, SHGFP_TYPE_DEFAULT = 1 };

// `path` has room for MAX_PATH characters.
HRESULT WINAPI SHGetFolderPathW(HWND owner, int csidl, HANDLE token, DWORD flags, LPWSTR path);
BOOL WINAPI SHGetSpecialFolderPathW(HWND owner, LPWSTR path, int csidl, BOOL create);

// Makes a directory and all that is missing above it; the path must be full. Answers a system error number:
// ERROR_ALREADY_EXISTS also when a file of that name is in the way, ERROR_BAD_PATHNAME for a relative path,
// ERROR_FILENAME_EXCED_RANGE for more than 247 characters.
int WINAPI SHCreateDirectory(HWND owner, PCWSTR path);
int WINAPI SHCreateDirectoryExW(HWND owner, LPCWSTR path, const SECURITY_ATTRIBUTES* security);

using BFFCALLBACK = int(CALLBACK*)(HWND, UINT, LPARAM, LPARAM);

#define BIF_RETURNONLYFSDIRS 0x00000001
#define BIF_DONTGOBELOWDOMAIN 0x00000002

struct BROWSEINFOW {
  HWND hwndOwner;
  PCIDLIST_ABSOLUTE pidlRoot;  // null
  LPWSTR pszDisplayName;       // gets the chosen folder's own name; null, or room for MAX_PATH characters
  LPCWSTR lpszTitle;           // a line of instruction above the folders; null for none
  UINT ulFlags;
  BFFCALLBACK lpfn;  // null
  LPARAM lParam;
  int iImage;
};
using LPBROWSEINFOW = BROWSEINFOW*;

// Null when the user says no. The caller frees the list with CoTaskMemFree.
PIDLIST_ABSOLUTE WINAPI SHBrowseForFolderW(LPBROWSEINFOW browse);
// `path` has room for MAX_PATH characters; FALSE and "" for a list that names no place of the file system.
BOOL WINAPI SHGetPathFromIDListW(PCIDLIST_ABSOLUTE list, LPWSTR path);
