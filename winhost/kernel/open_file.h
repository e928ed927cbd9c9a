// Opening: the rules of CreateFileW.
#pragma once

#include <windows.h>

#include <memory>
#include <string_view>

#include "winhost/kernel/file_object.h"

namespace winhost {

struct OpenRequest {
  DWORD access = 0;  // as the caller gave it
  DWORD share = 0;
  DWORD disposition = OPEN_EXISTING;
  DWORD flags_and_attributes = 0;
  bool image = false;
};

// 0 and the object (an already existing file is told by `existed`), or the error.
DWORD OpenFile(std::u16string_view path, const OpenRequest& request, std::shared_ptr<KernelObject>* opened,
               bool* existed);

}  // namespace winhost
