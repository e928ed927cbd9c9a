// The objects behind GDI and GDI+ handles, in one table of this process. A handle is a number: a place in the table and
// how often that place was used, so a stale handle finds nothing. Any thread.
#pragma once

#include <windows.h>

#include <memory>

#include "winhost/gdi/object_counts.h"

namespace winhost {

class GraphicsObject {
 public:
  explicit GraphicsObject(ObjectKind kind) : kind_(kind) {}
  virtual ~GraphicsObject() = default;
  GraphicsObject(const GraphicsObject&) = delete;
  GraphicsObject& operator=(const GraphicsObject&) = delete;
  ObjectKind kind() const { return kind_; }

 private:
  ObjectKind kind_;
};

// `permanent` objects belong to the system: they are not counted and cannot be removed. Null when the table is full.
void* EnterObject(std::shared_ptr<GraphicsObject> object, bool permanent = false);
std::shared_ptr<GraphicsObject> FindGraphicsObject(const void* handle);
// False when there is none, or when it is permanent. Others may still share the object.
bool RemoveObject(const void* handle);
bool IsPermanentObject(const void* handle);
// For the end of the process: whatever is left goes.
void RemoveAllObjects();

// The object of class T (which has a kKind) behind a handle; null for any other.
template <class T>
std::shared_ptr<T> GraphicsObjectAs(const void* handle) {
  auto object = FindGraphicsObject(handle);
  return object && object->kind() == T::kKind ? std::static_pointer_cast<T>(std::move(object)) : nullptr;
}

// The same, with ERROR_INVALID_HANDLE as the last error for a wrong handle: GDI's way.
template <class T>
std::shared_ptr<T> GdiObjectAs(const void* handle) {
  auto object = GraphicsObjectAs<T>(handle);
  if (!object) SetLastError(ERROR_INVALID_HANDLE);
  return object;
}

}  // namespace winhost
