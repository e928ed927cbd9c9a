// Objects that live in files, and streams of bytes.
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

#define STREAM_SEEK_SET 0
#define STREAM_SEEK_CUR 1
#define STREAM_SEEK_END 2
#define STATFLAG_DEFAULT 0
#define STATFLAG_NONAME 1
#define STGTY_STREAM 2

struct STATSTG {
  LPOLESTR pwcsName;
  DWORD type;
  ULARGE_INTEGER cbSize;
  FILETIME mtime;
  FILETIME ctime;
  FILETIME atime;
  DWORD grfMode;
  DWORD grfLocksSupported;
  CLSID clsid;
  DWORD grfStateBits;
  DWORD reserved;
};

struct ISequentialStream : IUnknown {
  // S_OK also where the stream ends early; `done` (may be null) says how many bytes came.
  virtual HRESULT STDMETHODCALLTYPE Read(void* bytes, ULONG count, ULONG* done) = 0;
};
inline constexpr IID IID_ISequentialStream = {
    0x0c733a30, 0x2a1c, 0x11ce, {0xad, 0xe5, 0x00, 0xaa, 0x00, 0x44, 0x77, 0x3d}};

struct IStream : ISequentialStream {
  // A place before the start is refused with STG_E_INVALIDFUNCTION; one beyond the end is allowed.
  virtual HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) = 0;
  virtual HRESULT STDMETHODCALLTYPE Stat(STATSTG* stat, DWORD flags) = 0;
  // A second view of the same bytes, with a place of its own.
  virtual HRESULT STDMETHODCALLTYPE Clone(IStream** clone) = 0;
};
using LPSTREAM = IStream*;
inline constexpr IID IID_IStream = {0x0000000c, 0x0000, 0x0000, {0xc0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
