// The function table that InitLibs of the maker's network library fills: the easy interface of a library that is
// compatible with curl, under curl's calling convention and with curl's types. `long` is the system's own, as there.
#pragma once

#include <windows.h>

namespace vanta {

// Results of the interface that are named here, with curl's numbers.
enum EasyCode : int {
  EasyOk = 0,
  EasyFailedInit = 2,
  EasyPartialFile = 18,
  EasyWriteError = 23,
};

struct CVantaNetExportFuncs {
  DWORD size;  // of this table, set by the caller
  DWORD version;
  int (*global_init)(long flags);
  void (*global_cleanup)();
  void* (*easy_init)();
  int (*easy_setopt)(void* easy, int option, ...);
  int (*easy_perform)(void* easy);
  void (*easy_cleanup)(void* easy);
  int (*easy_getinfo)(void* easy, int info, ...);
  void (*easy_reset)(void* easy);
  const char* (*easy_strerror)(int code);
  void* (*slist_append)(void* list, const char* text);  // null on failure, which leaves the list as it was
  void (*slist_free_all)(void* list);
  int (*formadd)(void** first, void** last, ...);
  void (*formfree)(void* form);
};

}  // namespace vanta
