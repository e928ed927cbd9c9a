// The base library's trust object as the setup calls it.
#pragma once

#include <windows.h>

namespace vanta {

// {6066F80A-4B6D-4D49-B5DC-DB9D1DD07253}
inline constexpr GUID kTrustObjectId = {0x6066F80A, 0x4B6D, 0x4D49, {0xB5, 0xDC, 0xDB, 0x9D, 0x1D, 0xD0, 0x72, 0x53}};

// The first three are IUnknown's, written out so that the destructor can be closed to callers: objects end by Release.
struct IVantaFileTrust {
  virtual HRESULT STDMETHODCALLTYPE QueryInterface(const IID& iid, void** object) = 0;
  virtual ULONG STDMETHODCALLTYPE AddRef() = 0;
  virtual ULONG STDMETHODCALLTYPE Release() = 0;
  virtual HRESULT STDMETHODCALLTYPE Open(const WCHAR* path, DWORD flags) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetProperty(DWORD number, DWORD* value) = 0;

 protected:
  ~IVantaFileTrust() = default;
};

}  // namespace vanta
