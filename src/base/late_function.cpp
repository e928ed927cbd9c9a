#include "base/late_function.h"

namespace vanta {

void* LateAddress::Find() {
  once_.Run([this] {
    const HMODULE module = GetModuleHandleW(module_);
    if (module) address_ = reinterpret_cast<void*>(GetProcAddress(module, name_));
  });
  return address_;
}

}  // namespace vanta
