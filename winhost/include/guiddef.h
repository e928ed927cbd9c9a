// GUID and its comparisons. On this side every named GUID is an inline constant of its header, so there is no
// INITGUID dance and nothing to link.
#pragma once

#include <cstdint>
#include <cstring>

struct GUID {
  std::uint32_t Data1;
  std::uint16_t Data2;
  std::uint16_t Data3;
  std::uint8_t Data4[8];
};
using IID = GUID;
using CLSID = GUID;
using LPGUID = GUID*;
#define REFGUID const GUID&
#define REFIID const IID&
#define REFCLSID const CLSID&

inline bool operator==(const GUID& a, const GUID& b) { return std::memcmp(&a, &b, sizeof(GUID)) == 0; }
inline bool operator!=(const GUID& a, const GUID& b) { return !(a == b); }
inline bool IsEqualGUID(REFGUID a, REFGUID b) { return a == b; }
#define IsEqualIID(a, b) IsEqualGUID(a, b)
#define IsEqualCLSID(a, b) IsEqualGUID(a, b)

inline constexpr GUID GUID_NULL{};
