// Version resources of files of the machine: PE files of either bitness, and Linux programs with a resource image
// behind them. A block is a copy of the resource whose length word is cut to what there is, so VerQueryValueW never
// reads past it.
//
// GetFileVersionInfoSizeW answers 0 with the error of opening the file, ERROR_RESOURCE_DATA_NOT_FOUND for a file that
// is no image or whose version is damaged, ERROR_RESOURCE_TYPE_NOT_FOUND for an image without one. Unlike Windows, a
// system library is not looked for along the path: names are paths. Planned faults: "GetFileVersionInfoSizeW",
// "GetFileVersionInfoW" (subject: the path).
#pragma once

#include <windef.h>

#define VS_FILE_INFO MAKEINTRESOURCEW(16)
#define VS_VERSION_INFO 1
#define VS_FFI_SIGNATURE 0xFEEF04BDL
#define VS_FFI_STRUCVERSION 0x00010000L
#define VS_FFI_FILEFLAGSMASK 0x0000003FL
#define VOS_NT_WINDOWS32 0x00040004L
#define VFT_APP 0x00000001L
#define VFT_DLL 0x00000002L

struct VS_FIXEDFILEINFO {
  DWORD dwSignature;
  DWORD dwStrucVersion;
  DWORD dwFileVersionMS;
  DWORD dwFileVersionLS;
  DWORD dwProductVersionMS;
  DWORD dwProductVersionLS;
  DWORD dwFileFlagsMask;
  DWORD dwFileFlags;
  DWORD dwFileOS;
  DWORD dwFileType;
  DWORD dwFileSubtype;
  DWORD dwFileDateMS;
  DWORD dwFileDateLS;
};

DWORD WINAPI GetFileVersionInfoSizeW(LPCWSTR path, LPDWORD unused);
BOOL WINAPI GetFileVersionInfoW(LPCWSTR path, DWORD unused, DWORD bytes, LPVOID block);
// The value's length is in bytes, for strings in characters with the terminator. False with
// ERROR_RESOURCE_TYPE_NOT_FOUND when the block holds no such value.
BOOL WINAPI VerQueryValueW(LPCVOID block, LPCWSTR sub_block, LPVOID* value, PUINT length);
