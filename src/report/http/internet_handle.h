// The owner of a WinINet handle.
#pragma once

#include <windows.h>
#include <wininet.h>

#include <memory>

namespace vanta::HttpLib {

struct CInternetHandleDelete {
  void operator()(HINTERNET handle) const { InternetCloseHandle(handle); }
};
// HINTERNET is a pointer to nothing that is known, so the standard's owner takes it as it is.
using InternetHandle = std::unique_ptr<void, CInternetHandleDelete>;

}  // namespace vanta::HttpLib
