// BSTRs and VARIANTs. A BSTR carries its length in bytes in the four bytes before its first character (eight bytes lie
// before it here, for alignment); a null BSTR is an empty one.
// To fail: the fault plan, "SysAllocString" (subject: the text; any error: the call answers null).
#pragma once

#include <oaidl.h>

BSTR WINAPI SysAllocString(const OLECHAR* text);
// With a null text the characters are left unset.
BSTR WINAPI SysAllocStringLen(const OLECHAR* text, UINT chars);
void WINAPI SysFreeString(BSTR text);
UINT WINAPI SysStringLen(BSTR text);
UINT WINAPI SysStringByteLen(BSTR text);

void WINAPI VariantInit(VARIANT* variant);
// Frees what the variant owns; DISP_E_BADVARTYPE for a kind that does not exist.
HRESULT WINAPI VariantClear(VARIANT* variant);

#define V_VT(x) ((x)->vt)
#define V_BSTR(x) ((x)->bstrVal)
#define V_I4(x) ((x)->lVal)
#define V_BOOL(x) ((x)->boolVal)
#define V_DISPATCH(x) ((x)->pdispVal)
#define V_UNKNOWN(x) ((x)->punkVal)
