// Callbacks to a member operation that keep a weak reference to its object: called after the object is gone they do
// nothing and answer 0.
#pragma once

#include "lumo/core/weak.h"

namespace lumo {

template <class T, class R, class... Args>
auto WeakCallback(T* target, R (T::*operation)(Args...)) {
  return [reference = WeakRef<T>(target), operation](Args... args) -> R {
    T* const object = reference.Get();
    return object ? (object->*operation)(static_cast<Args>(args)...) : R();
  };
}

}  // namespace lumo
