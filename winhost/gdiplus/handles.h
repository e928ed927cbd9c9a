// GDI+ handles over the table of graphics objects, and what every function that makes something asks first.
#pragma once

#include <gdiplus.h>

#include <memory>
#include <optional>

#include "winhost/gdi/object_table.h"

namespace winhost {

// GDI+ has been started.
bool GdiplusStarted();
// The status with which a maker of objects must give up: not started, or planned to fail.
std::optional<Gdiplus::GpStatus> RefuseMaking(const char* operation);

// Enters a new object; its handle goes to `out`.
template <class Gp>
Gdiplus::GpStatus Hand(std::shared_ptr<GraphicsObject> object, Gp** out) {
  if (!object) return Gdiplus::OutOfMemory;
  void* handle = EnterObject(std::move(object));
  if (!handle) return Gdiplus::OutOfMemory;
  *out = reinterpret_cast<Gp*>(handle);
  return Gdiplus::Ok;
}

// Removes an object of class T.
template <class T>
Gdiplus::GpStatus Drop(const void* handle) {
  if (!GraphicsObjectAs<T>(handle)) return Gdiplus::InvalidParameter;
  RemoveObject(handle);
  return Gdiplus::Ok;
}

}  // namespace winhost
