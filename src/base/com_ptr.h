// A COM interface pointer that releases what it holds. Put() and As() serve the two ways interfaces are handed out.
#pragma once

#include <windows.h>
#include <objbase.h>

#include <utility>

namespace vanta {

template <class T>
class ComPtr {
 public:
  ComPtr() = default;
  ComPtr(const ComPtr& other) : pointer_(other.pointer_) {
    if (pointer_) pointer_->AddRef();
  }
  ComPtr(ComPtr&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
  ComPtr& operator=(ComPtr other) noexcept {
    std::swap(pointer_, other.pointer_);
    return *this;
  }
  ~ComPtr() { Reset(); }

  explicit operator bool() const { return pointer_ != nullptr; }
  T* operator->() const { return pointer_; }
  T* Get() const { return pointer_; }
  void Reset() {
    if (T* old = std::exchange(pointer_, nullptr)) old->Release();
  }
  T** Put() {
    Reset();
    return &pointer_;
  }
  void** PutVoid() { return reinterpret_cast<void**>(Put()); }

  // Asks the object for another of its interfaces.
  template <class Other>
  HRESULT As(const IID& iid, ComPtr<Other>& other) const {
    return pointer_->QueryInterface(iid, other.PutVoid());
  }

 private:
  T* pointer_ = nullptr;
};

}  // namespace vanta
