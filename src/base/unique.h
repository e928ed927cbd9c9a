// Owners of system resources: one move-only type a resource, closed exactly once, by the call named in its type.
#pragma once

#include <windows.h>

#include <utility>

namespace vanta {

// What a resource of the type looks like when there is none.
struct NoneIsNull {
  template <class H>
  static H None() {
    return H{};
  }
};
struct NoneIsInvalid {
  template <class H>
  static H None() {
    return reinterpret_cast<H>(static_cast<LONG_PTR>(-1));
  }
};

template <class H, auto Close, class NonePolicy = NoneIsNull>
class Unique {
 public:
  Unique() : handle_(NonePolicy::template None<H>()) {}
  explicit Unique(H handle) : handle_(handle) {}
  Unique(Unique&& other) noexcept : handle_(other.Release()) {}
  Unique& operator=(Unique&& other) noexcept {
    if (this != &other) Reset(other.Release());
    return *this;
  }
  ~Unique() { Reset(); }

  explicit operator bool() const { return handle_ != NonePolicy::template None<H>(); }
  H Get() const { return handle_; }
  H Release() { return std::exchange(handle_, NonePolicy::template None<H>()); }
  void Reset(H handle = NonePolicy::template None<H>()) {
    const H old = std::exchange(handle_, handle);
    if (old != NonePolicy::template None<H>()) Close(old);
  }
  // For calls that hand a resource out through a pointer; what was held is closed first.
  H* Put() {
    Reset();
    return &handle_;
  }

 private:
  H handle_;
};

using UniqueHandle = Unique<HANDLE, &CloseHandle>;
using UniqueFile = Unique<HANDLE, &CloseHandle, NoneIsInvalid>;
using UniqueSnapshot = Unique<HANDLE, &CloseHandle, NoneIsInvalid>;
using UniqueFind = Unique<HANDLE, &FindClose, NoneIsInvalid>;
using UniqueKey = Unique<HKEY, &RegCloseKey>;
using UniqueModule = Unique<HMODULE, &FreeLibrary>;
using UniqueService = Unique<SC_HANDLE, &CloseServiceHandle>;

}  // namespace vanta
