// The local and global heaps.
//
// Promises: fixed blocks are their own handles; movable ones are locked before use; a handle that is not (or no longer)
// allocated is refused with ERROR_INVALID_HANDLE. To fail: the fault plan, "LocalAlloc" and "GlobalAlloc".
#pragma once

#include <minwindef.h>

#define GMEM_FIXED 0x0
#define GMEM_MOVEABLE 0x2
#define GMEM_ZEROINIT 0x40
#define GHND (GMEM_MOVEABLE | GMEM_ZEROINIT)
#define GPTR (GMEM_FIXED | GMEM_ZEROINIT)
#define LMEM_FIXED 0x0
#define LMEM_MOVEABLE 0x2
#define LMEM_ZEROINIT 0x40
#define LPTR (LMEM_FIXED | LMEM_ZEROINIT)
#define LHND (LMEM_MOVEABLE | LMEM_ZEROINIT)

// Sizes in bytes. Freeing gives null on success and the handle on failure; null is freed with success.
HLOCAL WINAPI LocalAlloc(UINT flags, SIZE_T bytes);
HLOCAL WINAPI LocalFree(HLOCAL block);
SIZE_T WINAPI LocalSize(HLOCAL block);
HGLOBAL WINAPI GlobalAlloc(UINT flags, SIZE_T bytes);
HGLOBAL WINAPI GlobalFree(HGLOBAL block);
SIZE_T WINAPI GlobalSize(HGLOBAL block);
LPVOID WINAPI GlobalLock(HGLOBAL block);
// FALSE with NO_ERROR when the last lock is given up, FALSE with ERROR_NOT_LOCKED when there was none.
BOOL WINAPI GlobalUnlock(HGLOBAL block);
