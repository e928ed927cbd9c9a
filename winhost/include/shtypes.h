// Item identifier lists: how the shell names a place. They are items that each begin with their own size, the last one
// a size of 0; CoTaskMemFree frees a list.
#pragma once

#include <minwindef.h>

#pragma pack(push, 1)
struct SHITEMID {
  USHORT cb;  // bytes, these two included
  BYTE abID[1];
};
struct ITEMIDLIST {
  SHITEMID mkid;
};
#pragma pack(pop)
using LPITEMIDLIST = ITEMIDLIST*;
using LPCITEMIDLIST = const ITEMIDLIST*;
using PIDLIST_ABSOLUTE = ITEMIDLIST*;
using PCIDLIST_ABSOLUTE = const ITEMIDLIST*;
