// A bound on the whole of a request. WinINet's own time-outs count from one piece of an answer to the next, so a server
// that sends a byte now and then is never too late for them; closing the request's handle from another thread is what
// ends the call.
#pragma once

#include <windows.h>
#include <wininet.h>

#include "base/lock.h"

namespace vanta::HttpLib {

class RequestDeadline {
 public:
  // Starts to run at once; 0 milliseconds: no bound.
  explicit RequestDeadline(DWORD milliseconds);
  ~RequestDeadline();
  RequestDeadline(const RequestDeadline&) = delete;
  RequestDeadline& operator=(const RequestDeadline&) = delete;

  // From here to Unwatch the handle is closed when the time is up. False: the time is up already.
  bool Watch(HINTERNET request);
  // False: the handle was closed meanwhile and must not be closed again.
  bool Unwatch();

 private:
  static void CALLBACK TimeIsUp(UINT timer, UINT reserved, DWORD_PTR deadline, DWORD_PTR, DWORD_PTR);
  void Close();

  CriticalSection lock_;
  HINTERNET watched_ = nullptr;
  bool over_ = false;
  UINT timer_ = 0;
};

}  // namespace vanta::HttpLib
