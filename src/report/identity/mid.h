// CMID: the one object of the process that finds identifier 2 of the machine and keeps it.
#pragma once

#include <windows.h>

#include <atomic>
#include <string>

#include "base/lock.h"

namespace vanta {

// Reference-counted; objects end by Release, so the destructor is closed to callers. Rooms are in characters with
// terminator.
struct INewMID {
  virtual ULONG STDMETHODCALLTYPE AddRef() = 0;
  virtual ULONG STDMETHODCALLTYPE Release() = 0;
  virtual HRESULT STDMETHODCALLTYPE GetMid(WCHAR* buffer, DWORD room) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetMid2(WCHAR* buffer, DWORD room) = 0;
  virtual HRESULT STDMETHODCALLTYPE RefreshMid2() = 0;

 protected:
  ~INewMID() = default;
};

class CMID final : public INewMID {
 public:
  // The process's object, with a reference for the caller. It lives until the process ends.
  static INewMID* Instance();

  CMID() = default;
  CMID(const CMID&) = delete;
  CMID& operator=(const CMID&) = delete;

  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  // E_INVALIDARG without a buffer or with a room below 50. The first call asks the machine, under the object's lock.
  HRESULT STDMETHODCALLTYPE GetMid2(WCHAR* buffer, DWORD room) override;
  // Not offered by this object: E_NOTIMPL.
  HRESULT STDMETHODCALLTYPE GetMid(WCHAR* buffer, DWORD room) override;
  HRESULT STDMETHODCALLTYPE RefreshMid2() override;

 private:
  ~CMID() = default;

  CriticalSection lock_;
  std::string value_;
  std::atomic<ULONG> references_{1};
};

}  // namespace vanta
