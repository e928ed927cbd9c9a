// What every COM object here is built from: counting, QueryInterface and planned failures.
//
//   template <> inline constexpr std::array kIids<ITimeTrigger> = {&IID_ITimeTrigger, &IID_ITrigger, &IID_IDispatch};
//   class TimeTrigger final : public ComObject<ITimeTrigger> { … };
//   return MakeObject<TimeTrigger>(iid, object, arguments…);
#pragma once

#include <objbase.h>
#include <oleauto.h>

#include <array>
#include <atomic>
#include <new>
#include <optional>
#include <string>
#include <utility>

#include "winhost/machine/faults.h"

namespace winhost {

// The identities that a pointer to T answers for: its own and those of its bases but IUnknown.
template <class T>
inline constexpr std::array<const IID*, 0> kIids = {};

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"  // interfaces have none; nobody deletes through one

template <class First, class... More>
class ComObject : public First, public More... {
 public:
  ComObject() = default;
  ComObject(const ComObject&) = delete;
  ComObject& operator=(const ComObject&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (iid == IID_IUnknown) {
      *object = static_cast<First*>(this);
    } else {
      Answer<First>(iid, object);
      (Answer<More>(iid, object), ...);
    }
    if (!*object) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

 protected:
  virtual ~ComObject() = default;

 private:
  template <class Interface>
  void Answer(REFIID iid, void** object) {
    for (const IID* mine : kIids<Interface>) {
      if (iid == *mine) *object = static_cast<Interface*>(this);
    }
  }

  std::atomic<ULONG> references_{1};
};

#pragma GCC diagnostic pop

// A new Object, asked for `iid`. E_NOINTERFACE leaves nothing behind.
template <class Object, class... Arguments>
HRESULT MakeObject(REFIID iid, void** object, Arguments&&... arguments) {
  if (!object) return E_POINTER;
  *object = nullptr;
  auto* made = new (std::nothrow) Object(std::forward<Arguments>(arguments)...);
  if (!made) return E_OUTOFMEMORY;
  const HRESULT result = made->QueryInterface(iid, object);
  made->Release();
  return result;
}

// The same for a typed out-parameter.
template <class Object, class Interface, class... Arguments>
HRESULT MakeObject(Interface** object, Arguments&&... arguments) {
  return MakeObject<Object>(*kIids<Interface>[0], reinterpret_cast<void**>(object),
                            std::forward<Arguments>(arguments)...);
}

// The HRESULT with which this call is planned to fail. A plan may name a system error number as well.
inline std::optional<HRESULT> PlannedFailure(const char* operation, const OLECHAR* subject = nullptr) {
  const auto error = PlannedFault(operation, subject ? std::u16string_view(subject) : std::u16string_view());
  if (!error) return std::nullopt;
  return *error < 0x10000 ? HRESULT_FROM_WIN32(*error) : static_cast<HRESULT>(*error);
}

// A BSTR as text; a null one is empty.
inline std::u16string BstrText(BSTR text) { return text ? std::u16string(text, SysStringLen(text)) : std::u16string(); }

inline HRESULT ReturnBstr(const std::u16string& text, BSTR* out) {
  if (!out) return E_POINTER;
  *out = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  return *out ? S_OK : E_OUTOFMEMORY;
}

// Text that the caller frees with CoTaskMemFree.
HRESULT ReturnTaskText(const std::u16string& text, LPWSTR* out);

}  // namespace winhost
