// A handle that WriteFile can write to although no file of the machine stands behind it: the standard streams.
#pragma once

#include "winhost/kernel/object.h"

namespace winhost {

class ByteSink : public KernelObject {
 public:
  // `written` is never null. False with the last error set.
  virtual bool Write(const void* data, DWORD bytes, DWORD* written) = 0;
};

}  // namespace winhost
