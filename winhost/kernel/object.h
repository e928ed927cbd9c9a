// What stands behind a HANDLE: a reference-counted kernel object in a table of this process. Handles are never reused
// at once, so a stale one is found out (ERROR_INVALID_HANDLE) and does not close somebody else's object.
#pragma once

#include <minwindef.h>

#include <memory>

namespace winhost {

class KernelObject {
 public:
  virtual ~KernelObject() = default;
  // Blocks until the object is signalled, at most `real_ns` real nanoseconds (UINT64_MAX: for ever); consumes the
  // signal where the kind of object does so. False: timed out, or not an object one can wait for.
  virtual bool Wait(std::uint64_t real_ns) {
    (void)real_ns;
    return false;
  }
};

// A new handle that shares ownership of `object`. Any thread.
HANDLE MakeHandle(std::shared_ptr<KernelObject> object);
// The object behind a handle; null, with the last error set to ERROR_INVALID_HANDLE, when there is none.
std::shared_ptr<KernelObject> FindObject(HANDLE handle);

template <class T>
std::shared_ptr<T> ObjectAs(HANDLE handle) {
  return std::dynamic_pointer_cast<T>(FindObject(handle));
}

}  // namespace winhost
