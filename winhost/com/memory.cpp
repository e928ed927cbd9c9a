#include <windows.h>
#include <ole2.h>

#include <sys/random.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "winhost/com/object.h"

namespace {

// Bytes ahead of a BSTR's first character. Four would hold the length; eight keep what follows aligned.
constexpr std::size_t kBstrHead = 8;

BSTR MakeBstr(const OLECHAR* text, UINT chars) {
  constexpr UINT kMost = (std::numeric_limits<UINT>::max() - 2 - kBstrHead) / sizeof(OLECHAR);
  if (chars > kMost) return nullptr;
  const std::size_t bytes = chars * sizeof(OLECHAR);
  auto* block = static_cast<unsigned char*>(std::malloc(kBstrHead + bytes + sizeof(OLECHAR)));
  if (!block) return nullptr;
  const auto length = static_cast<std::uint32_t>(bytes);
  std::memcpy(block + kBstrHead - sizeof length, &length, sizeof length);
  if (text) std::memcpy(block + kBstrHead, text, bytes);
  std::memset(block + kBstrHead + bytes, 0, sizeof(OLECHAR));
  return reinterpret_cast<BSTR>(block + kBstrHead);
}

}  // namespace

BSTR SysAllocStringLen(const OLECHAR* text, UINT chars) {
  const std::u16string_view subject = text ? std::u16string_view(text, chars) : std::u16string_view();
  if (winhost::PlannedFault("SysAllocString", subject)) return nullptr;
  return MakeBstr(text, chars);
}

BSTR SysAllocString(const OLECHAR* text) {
  if (!text) return nullptr;
  return SysAllocStringLen(text, static_cast<UINT>(std::char_traits<OLECHAR>::length(text)));
}

void SysFreeString(BSTR text) {
  if (text) std::free(reinterpret_cast<unsigned char*>(text) - kBstrHead);
}

UINT SysStringByteLen(BSTR text) {
  if (!text) return 0;
  std::uint32_t length;
  std::memcpy(&length, reinterpret_cast<unsigned char*>(text) - sizeof length, sizeof length);
  return length;
}

UINT SysStringLen(BSTR text) { return SysStringByteLen(text) / static_cast<UINT>(sizeof(OLECHAR)); }

void VariantInit(VARIANT* variant) { *variant = VARIANT{}; }

HRESULT VariantClear(VARIANT* variant) {
  const int base = variant->vt & ~(VT_BYREF | VT_ARRAY);
  if (base > VT_UINT || (variant->vt & VT_ARRAY)) return DISP_E_BADVARTYPE;
  if (variant->vt == VT_BSTR) {
    SysFreeString(variant->bstrVal);
  } else if ((variant->vt == VT_UNKNOWN || variant->vt == VT_DISPATCH) && variant->punkVal) {
    variant->punkVal->Release();
  }
  variant->vt = VT_EMPTY;
  return S_OK;
}

// Never null for a size of 0, as the system's task allocator.
LPVOID CoTaskMemAlloc(SIZE_T bytes) { return std::malloc(bytes ? bytes : 1); }
void CoTaskMemFree(LPVOID memory) { std::free(memory); }
LPVOID CoTaskMemRealloc(LPVOID memory, SIZE_T bytes) {
  if (memory && bytes == 0) {
    std::free(memory);
    return nullptr;
  }
  return std::realloc(memory, bytes ? bytes : 1);
}

HRESULT CoCreateGuid(GUID* guid) {
  if (!guid) return E_INVALIDARG;
  if (getrandom(guid, sizeof *guid, 0) != sizeof *guid) return E_FAIL;
  guid->Data3 = static_cast<std::uint16_t>((guid->Data3 & 0x0FFF) | 0x4000);
  guid->Data4[0] = static_cast<std::uint8_t>((guid->Data4[0] & 0x3F) | 0x80);
  return S_OK;
}

int StringFromGUID2(REFGUID guid, LPOLESTR text, int capacity) {
  constexpr int kChars = 39;  // with terminator
  if (!text || capacity < kChars) return 0;
  char ascii[kChars];
  const auto& d = guid.Data4;
  std::snprintf(ascii, sizeof ascii, "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}", guid.Data1, guid.Data2,
                guid.Data3, d[0], d[1], d[2], d[3], d[4], d[5], d[6], d[7]);
  for (int i = 0; i < kChars; ++i) text[i] = static_cast<OLECHAR>(ascii[i]);
  return kChars;
}

namespace winhost {

HRESULT ReturnTaskText(const std::u16string& text, LPWSTR* out) {
  if (!out) return E_POINTER;
  const std::size_t bytes = (text.size() + 1) * sizeof(WCHAR);
  *out = static_cast<LPWSTR>(CoTaskMemAlloc(bytes));
  if (!*out) return E_OUTOFMEMORY;
  std::memcpy(*out, text.c_str(), bytes);
  return S_OK;
}

}  // namespace winhost
