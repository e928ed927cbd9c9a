// Objects that hand out services of their surroundings.
#pragma once

#include <ole2.h>

struct IServiceProvider : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE QueryService(REFGUID service, REFIID iid, void** object) = 0;
};
inline constexpr IID IID_IServiceProvider = {
    0x6d5140c1, 0x7436, 0x11ce, {0x80, 0x34, 0x00, 0xaa, 0x00, 0x60, 0x09, 0xfa}};
