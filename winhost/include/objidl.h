// Objects that live in files.
#pragma once

#include <unknwn.h>

struct IPersist : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE GetClassID(CLSID* class_id) = 0;
};
inline constexpr IID IID_IPersist = {0x0000010c, 0x0000, 0x0000, {0xc0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

#define STGM_READ 0x00000000L
#define STGM_WRITE 0x00000001L
#define STGM_READWRITE 0x00000002L

struct IPersistFile : IPersist {
  virtual HRESULT STDMETHODCALLTYPE IsDirty() = 0;
  virtual HRESULT STDMETHODCALLTYPE Load(LPCOLESTR file, DWORD mode) = 0;
  // A null file means the one that the object was loaded from or last saved to with `remember`.
  virtual HRESULT STDMETHODCALLTYPE Save(LPCOLESTR file, BOOL remember) = 0;
  virtual HRESULT STDMETHODCALLTYPE SaveCompleted(LPCOLESTR file) = 0;
  // The caller frees the name with CoTaskMemFree.
  virtual HRESULT STDMETHODCALLTYPE GetCurFile(LPOLESTR* file) = 0;
};
inline constexpr IID IID_IPersistFile = {0x0000010b, 0x0000, 0x0000, {0xc0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
