// Automation: VARIANT (24 bytes on 64-bit, 16 on 32-bit systems) and IDispatch. Nothing here is called late-bound, so
// IDispatch has no methods of its own and the automation interfaces derive from it for their identity only.
#pragma once

#include <unknwn.h>

struct IDispatch : IUnknown {};
inline constexpr IID IID_IDispatch = {0x00020400, 0x0000, 0x0000, {0xc0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

struct VARIANT {
  VARTYPE vt;
  WORD wReserved1;
  WORD wReserved2;
  WORD wReserved3;
  union {
    LONGLONG llVal;
    LONG lVal;
    BYTE bVal;
    SHORT iVal;
    FLOAT fltVal;
    DOUBLE dblVal;
    VARIANT_BOOL boolVal;
    SCODE scode;
    DATE date;
    BSTR bstrVal;
    IUnknown* punkVal;
    IDispatch* pdispVal;
    VARIANT* pvarVal;
    PVOID byref;
    CHAR cVal;
    USHORT uiVal;
    ULONG ulVal;
    ULONGLONG ullVal;
    INT intVal;
    UINT uintVal;
    struct {
      PVOID pvRecord;
      PVOID pRecInfo;
    } record;
  };
};
using LPVARIANT = VARIANT*;
using VARIANTARG = VARIANT;
